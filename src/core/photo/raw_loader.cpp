// SPDX-License-Identifier: GPL-3.0-or-later
// LibRaw is loaded on first use: it and the libraries it brings (OpenMP,
// colour management, JPEG 2000) cost every process about 1.5 ms at
// start-up, though only the raw fallback decodes with it. Each LibRaw
// function the program calls is defined here and forwards to the real one
// (see lazy_library.h). Where the library cannot be loaded, libraw_init()
// answers null, which the fallback reports as a picture it cannot decode.

#include <libraw/libraw.h>

#include "core/library/lazy_library.h"

namespace {

LazyLibrary Raw{TAGSMITH_SONAME_RAW, "camera raw photos cannot be decoded"};

}  // namespace

#define TS_RAW(ret, name, params, args)      \
    TS_FORWARD(Raw, ret, name, params, args, \
               missingLibraryResult<ret>(LIBRAW_UNSPECIFIED_ERROR, "LibRaw is missing"))

// clang-format off
TS_RAW(const char *, libraw_strerror, (int errorcode), (errorcode))
TS_RAW(libraw_data_t *, libraw_init, (unsigned int flags), (flags))
TS_RAW(int, libraw_open_file, (libraw_data_t *lr, const char *file), (lr, file))
TS_RAW(int, libraw_unpack, (libraw_data_t *lr), (lr))
TS_RAW(void, libraw_close, (libraw_data_t *lr), (lr))
TS_RAW(void, libraw_set_dataerror_handler, (libraw_data_t *lr, data_callback func, void *data), (lr, func, data))
TS_RAW(int, libraw_dcraw_process, (libraw_data_t *lr), (lr))
TS_RAW(libraw_processed_image_t *, libraw_dcraw_make_mem_image, (libraw_data_t *lr, int *errc), (lr, errc))
TS_RAW(void, libraw_dcraw_clear_mem, (libraw_processed_image_t *image), (image))
// clang-format on
