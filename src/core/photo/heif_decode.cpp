// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/heif_decode.h"

#include <QFile>
#include <QFileInfo>

#include <libheif/heif.h>

#include <memory>

#include "core/common/logging.h"

namespace {

// Larger files are not handed to the decoder.
constexpr qint64 kMaxHeifBytes = qint64(1) << 30;

template <typename T, auto Free>
struct Releaser {
    void operator()(T* p) const {
        if (p) Free(p);
    }
};
using Context = std::unique_ptr<heif_context, Releaser<heif_context, heif_context_free>>;
using Handle =
    std::unique_ptr<heif_image_handle, Releaser<heif_image_handle, heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, Releaser<heif_image, heif_image_release>>;

bool failed(const heif_error& error, const QString& path) {
    if (error.code == heif_error_Ok) return false;
    qCInfo(lcTagsmith).noquote() << "HEIF picture not decoded ==" << path << "==" << error.message;
    return true;
}

// A stored thumbnail at least `maxSide` on its longer side, else null.
Handle thumbnailOf(heif_image_handle* primary, int maxSide) {
    heif_item_id ids[16];
    const int count = heif_image_handle_get_list_of_thumbnail_IDs(primary, ids, 16);
    for (int i = 0; i < count; ++i) {
        heif_image_handle* thumb = nullptr;
        if (heif_image_handle_get_thumbnail(primary, ids[i], &thumb).code != heif_error_Ok)
            continue;
        Handle handle(thumb);
        if (std::max(heif_image_handle_get_width(thumb), heif_image_handle_get_height(thumb)) >=
            maxSide)
            return handle;
    }
    return nullptr;
}

}  // namespace

QSize heifPictureSize(QByteArrayView file) {
    Context context(heif_context_alloc());
    heif_image_handle* primary = nullptr;
    if (!context ||
        heif_context_read_from_memory_without_copy(context.get(), file.data(), size_t(file.size()),
                                                   nullptr)
                .code != heif_error_Ok ||
        heif_context_get_primary_image_handle(context.get(), &primary).code != heif_error_Ok)
        return {};
    Handle handle(primary);
    return {heif_image_handle_get_width(primary), heif_image_handle_get_height(primary)};
}

bool isHeifPicture(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray head = file.read(64);
    return heif_check_filetype(reinterpret_cast<const uint8_t*>(head.constData()),
                               int(head.size())) == heif_filetype_yes_supported;
}

QImage decodeHeifPicture(const QString& path, int maxSide) {
    if (QFileInfo(path).size() > kMaxHeifBytes) return {};
    Context context(heif_context_alloc());
    if (!context || failed(heif_context_read_from_file(
                               context.get(), QFile::encodeName(path).constData(), nullptr),
                           path))
        return {};
    heif_image_handle* primary = nullptr;
    if (failed(heif_context_get_primary_image_handle(context.get(), &primary), path)) return {};
    Handle handle(primary);
    if (maxSide > 0)
        if (Handle thumb = thumbnailOf(primary, maxSide)) handle = std::move(thumb);
    heif_image* decoded = nullptr;
    if (failed(heif_decode_image(handle.get(), &decoded, heif_colorspace_RGB,
                                 heif_chroma_interleaved_RGBA, nullptr),
               path))
        return {};
    Image image(decoded);
    int stride = 0;
    const uint8_t* pixels =
        heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(decoded, heif_channel_interleaved);
    const int height = heif_image_get_height(decoded, heif_channel_interleaved);
    if (!pixels || width <= 0 || height <= 0 || stride < width * 4) return {};
    QImage picture =
        QImage(pixels, width, height, stride, QImage::Format_RGBA8888).copy();  // owns its pixels
    if (maxSide > 0 && std::max(width, height) > maxSide)
        picture = picture.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}
