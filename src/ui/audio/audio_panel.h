#pragma once

#include <QWidget>

#include "core/library/ik_image_item.h"

class QLabel;

// The panel of a selected audio file: for now its file facts and tags.
class AudioPanel : public QWidget {
    Q_OBJECT
public:
    explicit AudioPanel(QWidget* parent = nullptr);

    void ShowAudioViewWithItem(const IKImageItem& item);
    QString fileNameText() const;

private:
    QLabel* m_fileName = nullptr;
    QLabel* m_fileSize = nullptr;
    QLabel* m_fileKind = nullptr;
    QLabel* m_fileLength = nullptr;
    QLabel* m_artist = nullptr;
    QLabel* m_album = nullptr;
};
