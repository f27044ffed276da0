// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/photo/photo_windows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/map_view.h"

namespace {
QLineEdit* addField(QFormLayout* form, const char* outlet, const QString& title,
                    const QString& placeholder = {}, const QString& tip = {}) {
    auto* edit = new QLineEdit;
    edit->setObjectName(QLatin1String(outlet));
    edit->setPlaceholderText(placeholder);
    // A field without a tip of its own tells its format.
    edit->setToolTip(tip.isEmpty() ? QObject::tr("%1, as %2").arg(title, placeholder) : tip);
    edit->setMinimumWidth(200);
    form->addRow(title, edit);
    return edit;
}
}  // namespace

PhotoDateWindow::PhotoDateWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("changeDateWindow"));
    setWindowTitle(tr("Change Photo Date"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    const QString format = tr("YYYY:MM:DD HH:MM:SS");
    orignalDatelab = addField(form, "orignalDatelab", tr("File date"), format);
    diginalDatelab = addField(form, "diginalDatelab", tr("Date taken"), format);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(this);
    saveButton = buttons->addButton(tr("Save"), QDialogButtonBox::AcceptRole);
    saveButton->setObjectName(QStringLiteral("saveDateButton"));
    saveButton->setToolTip(tr("Write the dates into a copy of the selected photos"));
    buttons->addButton(QDialogButtonBox::Cancel)->setToolTip(tr("Close without changing a date"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

GpsWindow::GpsWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("changeGPSWindow"));
    setWindowTitle(tr("Edit GPS"));
    auto* layout = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    auto* form = new QFormLayout;
    latitudelab = addField(form, "latitudelab", tr("Latitude"), QStringLiteral("-33.8568"),
                           tr("Decimal degrees; south of the equator negative"));
    longtitudelab = addField(form, "longtitudelab", tr("Longitude"), QStringLiteral("151.2153"),
                             tr("Decimal degrees; west of Greenwich negative"));
    altitudelab = addField(form, "altitudelab", tr("Altitude (m)"), QStringLiteral("0"),
                           tr("Metres; below sea level negative"));
    dateStamplab = addField(form, "dateStamplab", tr("GPS date"), tr("YYYY:MM:DD"));
    timeStamplab = addField(form, "timeStamplab", tr("GPS time"), tr("HH:MM:SS"));
    left->addLayout(form);
    left->addStretch(1);
    auto* buttons = new QHBoxLayout;
    previewButton = new QPushButton(tr("Preview"), this);
    previewButton->setObjectName(QStringLiteral("previewGpsButton"));
    cancelButton = new QPushButton(tr("Cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cancelGpsButton"));
    saveButton = new QPushButton(tr("Save"), this);
    saveButton->setObjectName(QStringLiteral("saveGpsButton"));
    saveButton->setDefault(true);
    previewButton->setToolTip(tr("Show the position on the map"));
    cancelButton->setToolTip(tr("Close without changing the position"));
    saveButton->setToolTip(tr("Write the position into a copy of the selected photos"));
    buttons->addWidget(previewButton);
    buttons->addStretch(1);
    buttons->addWidget(cancelButton);
    buttons->addWidget(saveButton);
    left->addLayout(buttons);
    layout->addLayout(left);
    previewMapView = new MapView(this);
    previewMapView->setObjectName(QStringLiteral("previewMapView"));
    previewMapView->setMinimumSize(320, 260);
    layout->addWidget(previewMapView, 1);
}

PhotoMapWindow::PhotoMapWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("mapWindow"));
    setWindowTitle(tr("Map"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    currentMapView = new MapView(this);
    currentMapView->setObjectName(QStringLiteral("currentMapView"));
    currentMapView->setMinimumSize(560, 420);
    layout->addWidget(currentMapView);
}
