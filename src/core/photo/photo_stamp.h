// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

#include "core/photo/photo_writers.h"

// The date stamp (`AddDateOnPhotoAction:`): the date a photo was taken drawn
// into its picture, written as a JPEG copy "NAME_date.EXT" in the storage
// folder with the photo's metadata (orientation 1: the drawing is upright)
// and the photo's date as its file dates.

// The stamp's look: the preferences' font, colour, corner and date layout.
struct StampStyle {
    QString currentFontname = QStringLiteral("Lucida Grande");
    int currentFontSize = 14;  // points, one pixel each; 0 or less: 12
    QColor currentFontColor = Qt::white;
    QString postion = QStringLiteral("Lower left corner");    // a corner title of `postionBtn`
    QString dateFormat = QStringLiteral("MM/DD/YYYY HH:MM");  // a title of `dateFormatBtn`
};

// The date text as read: the Exif original date when the photo has both an
// original and a digitized date, else the description of the file's
// creation date cut to date and time ("yyyy-MM-dd HH:mm:ss", universal
// time); the description of now when the photo's metadata cannot be read.
QString stampDateSource(const PhotoSource& source, const QDateTime& creation);

// The text laid out by a `dateFormatBtn` title: a colon date becomes
// month/day/year, day/month/year or year/month/day followed by the whole
// time; a dashed date keeps its form; another title leaves the text as read.
QString stampDateText(const QString& dateText, const QString& layout);

// Where the text goes in a picture of `picture` size (top-left origin), for
// a text measuring `text`: 50 pixels in from the left or 20 from the right
// edge of the text box; an empty measure takes a 400 x 50 box.
QRectF stampTextRect(const QSizeF& picture, const QSizeF& text, const QString& position);

// The photo with the text drawn in its corner.
QImage drawDateStamp(const QImage& photo, const QString& text, const StampStyle& style);

// The stamp of one photo: drawn into a private temporary file, re-encoded
// as JPEG (a PNG keeps its name and holds JPEG data) and published under
// "NAME_date.EXT" (or the free name the batch gives), never revealed.
PhotoWriteResult AddDateOnPhotoAction(const IKImageItem& item, const StampStyle& style,
                                      const StorageContext& storage, OutputBatch& batch);
