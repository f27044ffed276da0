#pragma once

#include <QWidget>

#include "core/library/ik_image_item.h"

class QFormLayout;
class QLabel;

// The panel of a selected video: for now its file facts (name, size, kind,
// length, created date, path). An empty record clears it.
class VideoPanel : public QWidget {
    Q_OBJECT
public:
    explicit VideoPanel(QWidget* parent = nullptr);

    void ShowVideoViewWithItem(const IKImageItem& item);

    QString fileNameText() const;
    QString fileSizeText() const;
    QString fileKindText() const;

private:
    QLabel* m_title = nullptr;
    QLabel* m_fileName = nullptr;
    QLabel* m_fileSize = nullptr;
    QLabel* m_fileKind = nullptr;
    QLabel* m_fileLength = nullptr;
    QLabel* m_fileDate = nullptr;
    QLabel* m_filePath = nullptr;
};

// Shared by the media panels: a heading and a two-column form of fact rows.
QLabel* addFactRow(QFormLayout* form, const QString& title);
