#include "core/photo/photo_picture.h"

#include <QImageReader>

#include "core/common/logging.h"

QImage loadPhotoPicture(const QString& path, int maxSide) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    if (maxSide > 0) {
        // The scaled size applies before the orientation turns the picture,
        // which keeps the longer side where it is.
        const QSize size = reader.size();
        if (size.isValid() && std::max(size.width(), size.height()) > maxSide)
            reader.setScaledSize(size.scaled(maxSide, maxSide, Qt::KeepAspectRatio));
    }
    QImage picture = reader.read();
    if (picture.isNull())
        qCInfo(lcTagsmith).noquote()
            << "picture not decoded ==" << path << "==" << reader.errorString();
    return picture;
}
