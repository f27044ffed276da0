// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <QWidget>

#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_writers.h"

class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTreeView;
class MapView;

// The panel of the shown photo: its read-only lines, the editable fields in
// three groups (description, camera, location), the map of its position and
// the outline of every property. It shows what the controller hands it and
// answers what the user typed; the remembered values and the group flags
// are the controller's.
class PhotoPanel : public QWidget {
    Q_OBJECT
public:
    explicit PhotoPanel(QWidget* parent = nullptr);

    // The longer side of the preview picture, in pixels.
    static constexpr int kPreviewSide = 360;

    // Fills the read-only lines, the fields and the outline. The map is
    // shown at `position` when there is one and hidden otherwise.
    void showPhoto(const PhotoPanelTexts& texts, const PhotoEditorState& state,
                   const QList<PropertyTreeRow>& tree, const double* position);
    // Back to the bare labels (nothing shown, or an unreadable photo).
    void clear();
    // The preview of the shown photo; none for a null picture.
    void setPicture(const QImage& picture);

    // The panel's texts as the user sees them (old values and flags empty).
    PhotoEditorState editorState() const;

    QLineEdit* field(const QString& outletName) const { return m_fields.value(outletName); }
    QLabel* infoLabel(const QString& outletName) const { return m_info.value(outletName); }
    QTreeView* treeView() const { return m_tree; }
    QStandardItemModel* localTreeController() const { return m_treeModel; }
    MapView* currentlocalMapView() const { return m_map; }

Q_SIGNALS:
    void basicFieldEdited();
    void cameraFieldEdited();
    void gpsFieldEdited();
    void applyRequested();
    void editGpsRequested();
    void changeDateRequested();

private:
    void fillTree(const QList<PropertyTreeRow>& rows);

    QHash<QString, QLineEdit*> m_fields;
    QHash<QString, QLabel*> m_info;
    QTreeView* m_tree = nullptr;
    QStandardItemModel* m_treeModel = nullptr;
    MapView* m_map = nullptr;
    QLabel* m_noPosition = nullptr;
    QLabel* m_preview = nullptr;
};
