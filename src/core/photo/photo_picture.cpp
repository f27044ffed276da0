// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/photo/photo_picture.h"

#include <QImageReader>

#include "core/common/logging.h"
#include "core/photo/heif_decode.h"

QImage loadPhotoPicture(const QString& path, int maxSide) {
    if (isHeifPicture(path)) return decodeHeifPicture(path, maxSide);
    QImageReader reader(path);
    reader.setAutoTransform(true);
    // JPEG readers scale while decoding: a large photo costs a fraction of
    // its full decode.
    const QSize full = reader.size();
    if (maxSide > 0 && full.isValid() && (full.width() > maxSide || full.height() > maxSide))
        reader.setScaledSize(full.scaled(maxSide, maxSide, Qt::KeepAspectRatio));
    QImage picture = reader.read();
    if (picture.isNull()) {
        qCInfo(lcTagsmith).noquote()
            << "photo picture not decoded ==" << path << "==" << reader.errorString();
        return {};
    }
    if (maxSide > 0 && (picture.width() > maxSide || picture.height() > maxSide))
        picture = picture.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}
