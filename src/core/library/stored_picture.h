// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <memory>

// A record's picture (a cover, a camera thumbnail), kept as the bytes it was
// stored as and decoded on first use: a folder of tagged songs is listed
// without decoding every cover, and the list decodes only the rows it shows.
// Copies share one decoding; any thread may ask for the picture.
class StoredPicture {
public:
    StoredPicture() = default;
    StoredPicture(const QImage& image);  // NOLINT(google-explicit-constructor): a decoded picture

    // The picture of `data` when its header reads as a picture of a known
    // size; a null picture otherwise. Nothing is decoded yet.
    static StoredPicture fromData(const QByteArray& data);

    // A picture is stored (it may still fail to decode); nothing is decoded.
    bool hasPicture() const { return m_state != nullptr; }
    // No picture, or one whose data does not decode (this decodes it).
    bool isNull() const { return image().isNull(); }
    // The picture's size, from its header where it is not decoded yet.
    QSize size() const;
    int width() const { return size().width(); }
    int height() const { return size().height(); }
    // The decoded picture (decoded once, on the first call).
    const QImage& image() const;
    operator const QImage&() const { return image(); }  // NOLINT(google-explicit-constructor)
    qint64 cacheKey() const { return image().cacheKey(); }
    // The same stored picture, or equal pixels.
    bool operator==(const StoredPicture& other) const {
        return m_state == other.m_state || image() == other.image();
    }

private:
    struct State;
    std::shared_ptr<State> m_state;
};
