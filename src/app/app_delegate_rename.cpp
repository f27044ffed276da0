// SPDX-License-Identifier: GPL-3.0-or-later
// The rename dialog: the new names are shown before anything moves; OK
// starts the rename thread behind a modal progress. The thread renames
// copies of the records; after each file the main thread takes the new
// name into the listed record, shows the progress and answers whether to go
// on, so the list is only touched there and stays right when the batch is
// cancelled. "Undo Rename" puts the last batch back.
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>

#include "app/app_delegate.h"
#include "core/batch/batch_rename.h"
#include "core/common/logging.h"
#include "ui/library/media_table_model.h"
#include "ui/photo/photo_browser.h"
#include "ui/shell/main_window.h"

void AppDelegate::ShowRenameWindowAction(QObject* sender) {
    dispatched("ShowRenameWindowAction:");
    // Camera files are not renamed; one rename runs at a time.
    if (!blocalMode || m_renameThread) return;
    const IKImageItemList items = batchSelection();
    if (items.isEmpty()) return showNothingSelected();
    QDialog dialog(m_window);
    dialog.setObjectName(QStringLiteral("renameWindow"));
    dialog.setWindowTitle(tr("Rename"));
    auto* form = new QFormLayout(&dialog);
    auto* customerFileNameBtn =
        new QRadioButton(tr("Rename media(s) by replacing filenames with custom text:"));
    auto* metaFileNameBtn = new QRadioButton(tr("Rename media(s) with media metadata tag(s):"));
    auto* customNamelab = new QLineEdit(QFileInfo(items.first()->fileName).completeBaseName());
    auto* checkStartNumber = new QCheckBox(tr("Start number at: 1"));
    auto* filenameFormatstrlab = new QLineEdit(QStringLiteral("{Existing File Name}"));
    auto* addTagsButton = new QComboBox;
    addTagsButton->addItem(tr("Insert media metadata tag(s)"));
    addTagsButton->addItems(renameTemplateTags());
    auto* tagpostionButton = new QComboBox;
    tagpostionButton->addItems({tr("the end of filename"), tr("the beginning of filename")});
    auto* renameDateFormatBtn = new QComboBox;
    renameDateFormatBtn->addItem(tr("Please Choose Date format"));
    renameDateFormatBtn->addItems(renameDateFormatTitles());
    auto* replaceInvaidStrBtn = new QCheckBox(tr("Replace invalid characters with _"));
    replaceInvaidStrBtn->setToolTip(
        tr("Characters that removable drives and network shares refuse (\\ / : * ? \" < > | "
           "and control characters) become _. A / is always left out."));
    auto* seqNumBtn = new QCheckBox(tr("Add sequence number"));
    seqNumBtn->setToolTip(tr("Template names end with a blank and a six-digit running number."));
    auto* AddSuffixStrBtn = new QLineEdit;
    AddSuffixStrBtn->setPlaceholderText(tr("Suffix after every name"));
    auto* preview = new QPlainTextEdit;
    preview->setReadOnly(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Every control tells what it does, and names itself where no label does.
    const std::pair<QWidget*, const char*> renameTips[] = {
        {customerFileNameBtn, QT_TR_NOOP("Every new name is this text and a number")},
        {metaFileNameBtn, QT_TR_NOOP("New names are made from the template below")},
        {customNamelab, QT_TR_NOOP("The text of the new names")},
        {checkStartNumber, QT_TR_NOOP("The first file is numbered 1 as well")},
        {filenameFormatstrlab, QT_TR_NOOP("The template: tags in braces are replaced by each "
                                          "file's values")},
        {addTagsButton, QT_TR_NOOP("Insert a metadata tag into the template")},
        {tagpostionButton, QT_TR_NOOP("Where an inserted tag goes in the template")},
        {renameDateFormatBtn, QT_TR_NOOP("How {Camera Date} is written")},
        {AddSuffixStrBtn, QT_TR_NOOP("Text added after every new name")},
        {preview, QT_TR_NOOP("The new names")}};
    const std::pair<QWidget*, const char*> renameNames[] = {
        {customerFileNameBtn, "customerFileNameBtn"},
        {metaFileNameBtn, "metaFileNameBtn"},
        {customNamelab, "customNamelab"},
        {checkStartNumber, "checkStartNumber"},
        {filenameFormatstrlab, "filenameFormatstrlab"},
        {addTagsButton, "addTagsButton"},
        {tagpostionButton, "tagpostionButton"},
        {renameDateFormatBtn, "renameDateFormatBtn"},
        {replaceInvaidStrBtn, "replaceInvaidStrBtn"},
        {seqNumBtn, "seqNumBtn"},
        {AddSuffixStrBtn, "AddSuffixStrBtn"},
        {preview, "renamePreview"}};
    for (const auto& [widget, name] : renameNames) widget->setObjectName(QLatin1String(name));
    for (const auto& [widget, tip] : renameTips) {
        widget->setToolTip(tr(tip));
        if (qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
            qobject_cast<QPlainTextEdit*>(widget))
            widget->setAccessibleName(tr(tip));
    }
    for (QAbstractButton* b : buttons->buttons())
        b->setToolTip(b == buttons->button(QDialogButtonBox::Ok) ? tr("Rename the files")
                                                                 : tr("Close without renaming"));
    form->addRow(customerFileNameBtn);
    form->addRow(customNamelab);
    form->addRow(checkStartNumber);
    form->addRow(metaFileNameBtn);
    form->addRow(filenameFormatstrlab);
    form->addRow(addTagsButton, tagpostionButton);
    form->addRow(tr("{Camera Date}:"), renameDateFormatBtn);
    form->addRow(replaceInvaidStrBtn, seqNumBtn);
    form->addRow(tr("Suffix:"), AddSuffixStrBtn);
    form->addRow(
        new QLabel(tr("New names (a name that is taken gets a number; a file whose second name "
                      "is taken too keeps its name):")));
    form->addRow(preview);
    form->addRow(buttons);
    customerFileNameBtn->setChecked(true);

    auto options = [&] {
        RenameOptions o;
        o.useCustomName = customerFileNameBtn->isChecked();
        o.customText = customNamelab->text();
        o.startNumber = checkStartNumber->isChecked();
        o.templateText = filenameFormatstrlab->text();
        o.dateFormat = renameDateFormatBtn->currentIndex() > 0 ? renameDateFormatBtn->currentText()
                                                               : QString();
        o.replaceInvalid = replaceInvaidStrBtn->isChecked();
        o.sequence = seqNumBtn->isChecked();
        o.suffix = AddSuffixStrBtn->text();
        return o;
    };
    auto refresh = [&] {
        const bool custom = customerFileNameBtn->isChecked();
        for (QWidget* w : std::initializer_list<QWidget*>{customNamelab, checkStartNumber})
            w->setEnabled(custom);
        for (QWidget* w :
             std::initializer_list<QWidget*>{filenameFormatstrlab, addTagsButton, tagpostionButton,
                                             renameDateFormatBtn, seqNumBtn})
            w->setEnabled(!custom);
        QStringList lines;
        for (const RenameStep& s : previewRename(items, options()))
            lines << QFileInfo(s.oldPath).fileName() + QStringLiteral("  →  ") +
                         (s.ok() ? QFileInfo(s.newPath).fileName() : s.problem);
        preview->setPlainText(lines.join(QLatin1Char('\n')));
    };
    connect(addTagsButton, &QComboBox::activated, &dialog, [&](int index) {
        if (index <= 0) return;
        filenameFormatstrlab->setText(insertRenameTag(filenameFormatstrlab->text(),
                                                      addTagsButton->itemText(index),
                                                      tagpostionButton->currentIndex() == 1));
        addTagsButton->setCurrentIndex(0);
    });
    for (QLineEdit* e : {customNamelab, filenameFormatstrlab, AddSuffixStrBtn})
        connect(e, &QLineEdit::textChanged, &dialog, refresh);
    for (QAbstractButton* b :
         std::initializer_list<QAbstractButton*>{customerFileNameBtn, metaFileNameBtn,
                                                 checkStartNumber, replaceInvaidStrBtn, seqNumBtn})
        connect(b, &QAbstractButton::toggled, &dialog, refresh);
    connect(renameDateFormatBtn, &QComboBox::currentIndexChanged, &dialog, refresh);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    refresh();
    if (dialog.exec() != QDialog::Accepted) return;

    SaveChangesRenameWindowAction(items, options());
}

void AppDelegate::UndoRenameAction(QObject* sender) {
    dispatched("UndoRenameAction:");
    if (m_renameThread) return;
    undoRename(*m_lastRename, localPhotoItemArray);
    m_lastRename->clear();
    m_undoRename->setEnabled(false);
    mediaController->refreshRows();
    for (const IKImageItemPtr& item : localImageBrowserView->photoModel()->content())
        localImageBrowserView->photoModel()->refreshItem(item);
}

void AppDelegate::SaveChangesRenameWindowAction(const IKImageItemList& listed,
                                                const RenameOptions& options) {
    IKImageItemList copies;
    for (const IKImageItemPtr& item : listed) copies << std::make_shared<IKImageItem>(*item);
    m_renameCancelled = false;
    m_renameResult = std::make_shared<QList<RenameStep>>();
    m_renameProgress =
        new QProgressDialog(tr("Renaming..."), tr("Cancel"), 0, int(listed.size()), m_window);
    m_renameProgress->setObjectName(QStringLiteral("renameProgress"));
    m_renameProgress->setWindowModality(Qt::WindowModal);
    m_renameProgress->setAutoReset(false);
    m_renameProgress->setAutoClose(false);
    m_renameProgress->setMinimumDuration(0);
    connect(m_renameProgress, &QProgressDialog::canceled, this, [this] {
        qCInfo(lcTagsmith) << "rename cancelled: it stops after the file in hand";
        m_renameCancelled = true;
    });
    m_renameProgress->show();
    m_renameThread = QThread::create([this, listed, copies, options] {
        ReNameLocalphotowithFileThreader(listed, copies, options);
    });
    m_renameThread->setObjectName(QStringLiteral("ReNameLocalphotowithFileThreader"));
    connect(m_renameThread, &QThread::finished, this,
            [this] { RenamePhotoFinishedHanderToMainThread(); });
    m_renameThread->start();
}

void AppDelegate::ReNameLocalphotowithFileThreader(const IKImageItemList& listed,
                                                   const IKImageItemList& copies,
                                                   const RenameOptions& options) {
    *m_renameResult = renameItems(copies, options, [&](int done, int total) {
        bool goOn = false;
        // Waits until the main thread has taken the file's new name.
        QMetaObject::invokeMethod(
            this,
            [&] {
                goOn = RefreshRenamePhotoProcessToMainThread(listed.at(done - 1),
                                                             *copies.at(done - 1), done, total);
            },
            Qt::BlockingQueuedConnection);
        return goOn;
    });
}

bool AppDelegate::RefreshRenamePhotoProcessToMainThread(const IKImageItemPtr& listed,
                                                        const IKImageItem& renamed, int done,
                                                        int total) {
    if (renamed.filePath != listed->filePath) {
        // Every record of the moved file follows it, a removed one too.
        const QString from = listed->filePath;
        for (const IKImageItemPtr& item : std::as_const(localPhotoItemArray)) {
            if (item->filePath != from) continue;
            item->filePath = renamed.filePath;
            item->fileName = renamed.fileName;
        }
        listed->filePath = renamed.filePath;
        listed->fileName = renamed.fileName;
        mediaController->refreshRows();
        localImageBrowserView->photoModel()->refreshItem(listed);
    }
    if (m_renameCancelled) return false;
    m_renameProgress->setLabelText(QStringLiteral("%1/%2").arg(done).arg(total));
    m_renameProgress->setValue(done);
    return true;
}

void AppDelegate::RenamePhotoFinishedHanderToMainThread() {
    if (!m_renameThread) return;  // already taken by stopRename()
    m_renameThread->wait();
    delete m_renameThread;
    m_renameThread = nullptr;
    const int total = m_renameProgress->maximum();
    m_renameProgress->hide();
    m_renameProgress->deleteLater();
    m_renameProgress = nullptr;
    *m_lastRename = *m_renameResult;
    int renamed = 0;
    for (const RenameStep& s : std::as_const(*m_lastRename)) renamed += s.ok() ? 1 : 0;
    m_undoRename->setEnabled(!m_lastRename->isEmpty());
    if (m_window)
        m_window->showWriteResult(tr("%1 of %2 files renamed").arg(renamed).arg(total), QString(),
                                  storagelocation);
}

void AppDelegate::stopRename() {
    if (!m_renameThread) return;
    m_renameCancelled = true;
    // The thread may be waiting for the main thread to take its last file.
    while (!m_renameThread->wait(20)) QCoreApplication::processEvents();
    RenamePhotoFinishedHanderToMainThread();
}
