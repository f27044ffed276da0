// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class MapView;

// The date window of photo mode: the original and digitized dates of the
// selected photos. Saving is the controller's (`ClickDateChangedSaveAction`).
class PhotoDateWindow : public QDialog {
    Q_OBJECT
public:
    explicit PhotoDateWindow(QWidget* parent = nullptr);
    QLineEdit* orignalDatelab = nullptr;
    QLineEdit* diginalDatelab = nullptr;
    QPushButton* saveButton = nullptr;
};

// The GPS window (`changeGPSWindow`): the position, altitude and GPS date and
// time to write into the selected photos, with a map to preview the position.
class GpsWindow : public QDialog {
    Q_OBJECT
public:
    explicit GpsWindow(QWidget* parent = nullptr);
    QLineEdit *latitudelab = nullptr, *longtitudelab = nullptr, *altitudelab = nullptr,
              *dateStamplab = nullptr, *timeStamplab = nullptr;
    MapView* previewMapView = nullptr;
    QPushButton *previewButton = nullptr, *saveButton = nullptr, *cancelButton = nullptr;
};

// The map window (`mapWindow`) of the shown photo's position.
class PhotoMapWindow : public QDialog {
    Q_OBJECT
public:
    explicit PhotoMapWindow(QWidget* parent = nullptr);
    MapView* currentMapView = nullptr;
};
