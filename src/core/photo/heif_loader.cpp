// SPDX-License-Identifier: GPL-3.0-or-later
// libheif is loaded on first use: it brings the HEVC and AV1 codec libraries,
// whose loading and start-up code cost every process about 5 ms, though only
// HEIC and AVIF pictures need them. Each libheif function the program calls
// is defined here and forwards to the real one (see lazy_library.h). Where
// the library cannot be loaded, calls answer an error, which the callers
// already handle as a picture libheif cannot decode.

#include <libheif/heif.h>

#include <type_traits>

#include "core/library/lazy_library.h"

namespace {

LazyLibrary Heif{TAGSMITH_SONAME_HEIF, "HEIC and AVIF pictures cannot be shown"};

template <typename R>
R missing() {
    if constexpr (std::is_same_v<R, heif_error>)
        return {heif_error_Unsupported_feature, heif_suberror_Unspecified, "libheif is missing"};
    else if constexpr (std::is_same_v<R, heif_filetype_result>)
        return heif_filetype_no;
    else if constexpr (!std::is_void_v<R>)
        return R{};
}

}  // namespace

#define TS_HEIF(ret, name, params, args) TS_FORWARD(Heif, ret, name, params, args, missing<ret>())

// clang-format off
TS_HEIF(heif_context *, heif_context_alloc, (void), ())
TS_HEIF(void, heif_context_free, (heif_context *ctx), (ctx))
TS_HEIF(void, heif_image_handle_release, (const heif_image_handle *handle), (handle))
TS_HEIF(void, heif_image_release, (const heif_image *image), (image))
TS_HEIF(int, heif_image_handle_get_list_of_thumbnail_IDs, (const heif_image_handle *handle, heif_item_id *ids, int count), (handle, ids, count))
TS_HEIF(heif_error, heif_image_handle_get_thumbnail, (const heif_image_handle *handle, heif_item_id id, heif_image_handle **out), (handle, id, out))
TS_HEIF(int, heif_image_handle_get_width, (const heif_image_handle *handle), (handle))
TS_HEIF(int, heif_image_handle_get_height, (const heif_image_handle *handle), (handle))
TS_HEIF(heif_error, heif_context_read_from_memory_without_copy, (heif_context *ctx, const void *mem, size_t size, const heif_reading_options *options), (ctx, mem, size, options))
TS_HEIF(heif_error, heif_context_read_from_file, (heif_context *ctx, const char *filename, const heif_reading_options *options), (ctx, filename, options))
TS_HEIF(heif_error, heif_context_get_primary_image_handle, (heif_context *ctx, heif_image_handle **handle), (ctx, handle))
TS_HEIF(heif_filetype_result, heif_check_filetype, (const uint8_t *data, int len), (data, len))
TS_HEIF(heif_error, heif_decode_image, (const heif_image_handle *handle, heif_image **out, heif_colorspace colorspace, heif_chroma chroma, const heif_decoding_options *options), (handle, out, colorspace, chroma, options))
TS_HEIF(const uint8_t *, heif_image_get_plane_readonly, (const heif_image *image, heif_channel channel, int *stride), (image, channel, stride))
TS_HEIF(int, heif_image_get_width, (const heif_image *image, heif_channel channel), (image, channel))
TS_HEIF(int, heif_image_get_height, (const heif_image *image, heif_channel channel), (image, channel))
// clang-format on
