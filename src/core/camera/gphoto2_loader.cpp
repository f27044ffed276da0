// SPDX-License-Identifier: GPL-3.0-or-later
// libgphoto2 is loaded on first use: it and its port, EXIF and module
// loader libraries cost every process about 1.5 ms at start-up, though only
// the camera import talks to it. Each function the program calls is defined
// here and forwards to the real one (see lazy_library.h). Where the library
// cannot be loaded, calls answer GP_ERROR_NOT_SUPPORTED, which the camera
// code already reports as a device that cannot be opened.

#include <gphoto2/gphoto2.h>

#include "core/library/lazy_library.h"

namespace {

// The port functions are found through libgphoto2, which depends on its port
// library.
LazyLibrary Gphoto{TAGSMITH_SONAME_GPHOTO2, "cameras and phones cannot be reached"};

}  // namespace

#define TS_GPHOTO(ret, name, params, args)      \
    TS_FORWARD(Gphoto, ret, name, params, args, \
               missingLibraryResult<ret>(GP_ERROR_NOT_SUPPORTED, "libgphoto2 is missing"))

// clang-format off
TS_GPHOTO(int, gp_abilities_list_detect, (CameraAbilitiesList *list, GPPortInfoList *info_list, CameraList *l, GPContext *context), (list, info_list, l, context))
TS_GPHOTO(int, gp_abilities_list_get_abilities, (CameraAbilitiesList *list, int index, CameraAbilities *abilities), (list, index, abilities))
TS_GPHOTO(int, gp_abilities_list_load, (CameraAbilitiesList *list, GPContext *context), (list, context))
TS_GPHOTO(int, gp_abilities_list_lookup_model, (CameraAbilitiesList *list, const char *model), (list, model))
TS_GPHOTO(int, gp_abilities_list_new, (CameraAbilitiesList **list), (list))
TS_GPHOTO(int, gp_camera_exit, (Camera *camera, GPContext *context), (camera, context))
TS_GPHOTO(int, gp_camera_file_delete, (Camera *camera, const char *folder, const char *file, GPContext *context), (camera, folder, file, context))
TS_GPHOTO(int, gp_camera_file_get, (Camera *camera, const char *folder, const char *file, CameraFileType type, CameraFile *camera_file, GPContext *context), (camera, folder, file, type, camera_file, context))
TS_GPHOTO(int, gp_camera_file_get_info, (Camera *camera, const char *folder, const char *file, CameraFileInfo *info, GPContext *context), (camera, folder, file, info, context))
TS_GPHOTO(int, gp_camera_folder_list_files, (Camera *camera, const char *folder, CameraList *list, GPContext *context), (camera, folder, list, context))
TS_GPHOTO(int, gp_camera_folder_list_folders, (Camera *camera, const char *folder, CameraList *list, GPContext *context), (camera, folder, list, context))
TS_GPHOTO(int, gp_camera_init, (Camera *camera, GPContext *context), (camera, context))
TS_GPHOTO(int, gp_camera_new, (Camera **camera), (camera))
TS_GPHOTO(int, gp_camera_set_abilities, (Camera *camera, CameraAbilities abilities), (camera, abilities))
TS_GPHOTO(int, gp_camera_set_port_info, (Camera *camera, GPPortInfo info), (camera, info))
TS_GPHOTO(int, gp_camera_unref, (Camera *camera), (camera))
TS_GPHOTO(GPContext *, gp_context_new, (void), ())
TS_GPHOTO(void, gp_context_unref, (GPContext *context), (context))
TS_GPHOTO(int, gp_file_get_data_and_size, (CameraFile *file, const char **data, unsigned long int *size), (file, data, size))
TS_GPHOTO(int, gp_file_new, (CameraFile **file), (file))
TS_GPHOTO(int, gp_file_new_from_fd, (CameraFile **file, int fd), (file, fd))
TS_GPHOTO(int, gp_file_unref, (CameraFile *file), (file))
TS_GPHOTO(int, gp_list_count, (CameraList *list), (list))
TS_GPHOTO(int, gp_list_get_name, (CameraList *list, int index, const char **name), (list, index, name))
TS_GPHOTO(int, gp_list_get_value, (CameraList *list, int index, const char **value), (list, index, value))
TS_GPHOTO(int, gp_list_new, (CameraList **list), (list))
TS_GPHOTO(int, gp_list_unref, (CameraList *list), (list))
TS_GPHOTO(int, gp_port_info_list_free, (GPPortInfoList *list), (list))
TS_GPHOTO(int, gp_port_info_list_get_info, (GPPortInfoList *list, int n, GPPortInfo *info), (list, n, info))
TS_GPHOTO(int, gp_port_info_list_load, (GPPortInfoList *list), (list))
TS_GPHOTO(int, gp_port_info_list_lookup_path, (GPPortInfoList *list, const char *path), (list, path))
TS_GPHOTO(int, gp_port_info_list_new, (GPPortInfoList **list), (list))
TS_GPHOTO(const char *, gp_result_as_string, (int result), (result))
// clang-format on
