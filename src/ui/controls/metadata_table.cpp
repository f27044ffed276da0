// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/metadata_table.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QTableWidget>

namespace {
constexpr int kTagThumbnailSize = 40;
}  // namespace

QTableWidget* makeMetadataTable(QWidget* parent) {
    auto* table = new QTableWidget(0, 3, parent);
    table->setObjectName(QStringLiteral("allTagsView"));
    table->setToolTip(
        QCoreApplication::translate("MetadataTable", "Every metadata item of the file, as stored"));
    table->setAccessibleName(QCoreApplication::translate("MetadataTable", "All Tags"));
    table->setTabKeyNavigation(false);
    table->setHorizontalHeaderLabels({QCoreApplication::translate("MetadataTable", "Key Space"),
                                      QCoreApplication::translate("MetadataTable", "Key"),
                                      QCoreApplication::translate("MetadataTable", "Value")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideRight);
    table->setIconSize(QSize(kTagThumbnailSize, kTagThumbnailSize));
    table->verticalHeader()->hide();
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QHeaderView* header = table->horizontalHeader();
    header->setMaximumSectionSize(260);
    header->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(2, QHeaderView::Stretch);
    return table;
}

void fillMetadataTable(QTableWidget* table, const QList<MetadataRow>& rows) {
    table->clearContents();
    table->setRowCount(int(rows.size()));
    const qreal dpr = table->devicePixelRatioF();
    for (int r = 0; r < rows.size(); ++r) {
        const MetadataRow& row = rows.at(r);
        const QString texts[] = {row.keySpace, row.key, row.value};
        for (int c = 0; c < 3; ++c) {
            auto* cell = new QTableWidgetItem(texts[c]);
            cell->setToolTip(texts[c]);
            cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);  // read-only
            table->setItem(r, c, cell);
        }
        if (row.picture.isEmpty()) continue;
        const QImage picture = QImage::fromData(row.picture);
        if (picture.isNull()) continue;
        const int side = qRound(kTagThumbnailSize * dpr);
        QPixmap thumbnail = QPixmap::fromImage(
            picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        thumbnail.setDevicePixelRatio(dpr);
        table->item(r, 2)->setIcon(QIcon(thumbnail));
        table->setRowHeight(r, kTagThumbnailSize + 4);
    }
    table->setVisible(!rows.isEmpty());
    const int height = table->horizontalHeader()->sizeHint().height() +
                       table->verticalHeader()->length() + 2 * table->frameWidth();
    table->setFixedHeight(height);
}
