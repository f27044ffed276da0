// SPDX-License-Identifier: GPL-3.0-or-later
// The batch tools in the window: the rename dialog with its preview and
// "Undo Rename", the batch date dialog and the property-list menu entries.
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "app/app_delegate.h"
#include "core/batch/batch_dates.h"
#include "core/batch/batch_rename.h"
#include "core/batch/copy_tools.h"
#include "core/batch/metadata_plist.h"
#include "core/common/logging.h"
#include "ui/library/media_table_model.h"
#include "ui/shell/main_window.h"

namespace {

// A modal progress window whose Cancel stops the batch after the file in hand.
BatchProgress progressIn(QProgressDialog& dialog) {
    return [&dialog](int done, int total) {
        dialog.setMaximum(total);
        dialog.setValue(done);
        dialog.setLabelText(QStringLiteral("%1/%2").arg(done).arg(total));
        QCoreApplication::processEvents();
        return !dialog.wasCanceled();
    };
}

}  // namespace

void AppDelegate::setupBatchActions() {
    m_lastRename = std::make_shared<QList<RenameStep>>();
    QMenu* menu = m_window->menuBar()->addMenu(tr("&Batch"));
    menu->addAction(tr("Rename Files..."), this, [this] { ShowRenameWindowAction(nullptr); });
    m_undoRename = menu->addAction(tr("Undo Rename"), this, [this] { UndoRenameAction(nullptr); });
    m_undoRename->setEnabled(false);
    menu->addAction(tr("Change Dates..."), this, [this] { EditvideofileDateInfoAction(nullptr); });
    menu->addAction(tr("Write XMP Sidecars to Videos..."), this,
                    [this] { WriteXMPMetadataToPhotosAction(nullptr); })
        ->setToolTip(tr("Writes the title, position and date of XMP sidecars into the videos "
                        "beside them, replacing the videos"));
    QAction* stamp =
        menu->addAction(tr("Add Date to Photos"), this, [this] { AddDateOnPhotoAction(nullptr); });
    stamp->setObjectName(QStringLiteral("addDateOnPhotoAction"));
    stamp->setToolTip(
        tr("Write copies of the selected photos with the date they were taken "
           "drawn in (font, colour, corner and layout from the preferences)"));
    using Tool = VideoWriteResult (*)(const IKImageItem&, const StorageContext&, OutputBatch&);
    const std::pair<const char*, Tool> copies[] = {
        {QT_TR_NOOP("Copy Recorded Date to File Dates"), ::ClickCopyExifDateToCreateDateAction},
        {QT_TR_NOOP("Copy Created Date to Recorded Date"),
         ::ClickCopyCreatedDateToCameraDateAction},
        {QT_TR_NOOP("Copy Created Date to Modified Date"),
         ::ClickCopyCreatedDateToModifyDateAction},
        {QT_TR_NOOP("Copy File Name to Comments"), ::ClickCopyFileNameToCommentsAction}};
    for (const auto& [title, tool] : copies) {
        menu->addAction(tr(title), this, [this, tool = tool] {
            const IKImageItemList items = selectedItems();
            if (items.isEmpty()) return showNothingSelected();
            OutputBatch batch;
            for (const IKImageItemPtr& item : items)
                reportWrite(tool(*item, storageContext(), batch));
        });
    }
    QAction* birth = menu->addAction(tr("Copy Modified Date to Created Date"));
    birth->setToolTip(QCoreApplication::translate("BatchTools", kCreationDateTooltip));
    birth->setEnabled(false);
    menu->setToolTipsVisible(true);

    menu->addSeparator();
    const std::pair<const char*, PhotoPlistKind> photoExports[] = {
        {QT_TR_NOOP("Export TIFF to Plist"), PhotoPlistKind::TIFF},
        {QT_TR_NOOP("Export Exif to Plist"), PhotoPlistKind::Exif},
        {QT_TR_NOOP("Export Exif and TIFF to Plist"), PhotoPlistKind::ExifAndTIFF},
        {QT_TR_NOOP("Export Exif and GPS to Plist"), PhotoPlistKind::ExifAndGPS},
        {QT_TR_NOOP("Export All Photo Metadata to Plist"), PhotoPlistKind::All}};
    auto runExport = [this](const std::function<QList<VideoWriteResult>(
                                const IKImageItemList&, OutputBatch&, const BatchProgress&)>& run) {
        const IKImageItemList items = selectedItems();
        if (items.isEmpty()) return showNothingSelected();
        QProgressDialog progress(tr("Exporting..."), tr("Cancel"), 0, int(items.size()), m_window);
        progress.setWindowModality(Qt::WindowModal);
        OutputBatch batch;
        for (const VideoWriteResult& r : run(items, batch, progressIn(progress))) reportWrite(r);
    };
    for (const auto& [title, kind] : photoExports) {
        menu->addAction(tr(title), this, [this, runExport, kind = kind] {
            runExport(
                [&](const IKImageItemList& items, OutputBatch& batch, const BatchProgress& p) {
                    return exportPhotoPlist(items, kind, storageContext(), batch, p);
                });
        });
    }
    menu->addAction(tr("Export Template"), this, [this, runExport] {
        runExport([&](const IKImageItemList& items, OutputBatch& batch, const BatchProgress&) {
            return ExportTemplateDataToPlist(items, storageContext(), batch);
        });
    });
    menu->addAction(tr("Export Metadata"), this, [this, runExport] {
        runExport([&](const IKImageItemList& items, OutputBatch& batch, const BatchProgress& p) {
            return exportMetadataPlist(items, storageContext(), batch, p);
        });
    });
    menu->addAction(tr("Export Artwork"), this, [this, runExport] {
        runExport([&](const IKImageItemList& items, OutputBatch& batch, const BatchProgress& p) {
            return exportArtwork(items, storageContext(), batch, p);
        });
    });

    menu->addSeparator();
    using Import = std::function<PlistImport(const QString&, const IKImageItemList&, OutputBatch&,
                                             const BatchProgress&)>;
    auto addImport = [this, menu](const QString& title, const QString& message, Import run) {
        menu->addAction(title, this, [this, message, run] {
            const IKImageItemList items = selectedItems();
            if (items.isEmpty()) return showNothingSelected();
            const QString plist = QFileDialog::getOpenFileName(
                m_window, message, QString(), tr("Property lists (*.plist);;All files (*)"));
            if (plist.isEmpty()) return;
            QProgressDialog progress(tr("Importing..."), tr("Cancel"), 0, int(items.size()),
                                     m_window);
            progress.setWindowModality(Qt::WindowModal);
            OutputBatch batch;
            const PlistImport outcome = run(plist, items, batch, progressIn(progress));
            if (!outcome.problem.isEmpty() && m_window)
                m_window->showWriteResult(
                    QFileInfo(plist).fileName() + QStringLiteral(": ") + outcome.problem, QString(),
                    storagelocation);
            for (const VideoWriteResult& r : outcome.results) reportWrite(r);
        });
    };
    const std::pair<const char*, PhotoPlistKind> photoImports[] = {
        {QT_TR_NOOP("Import TIFF from Plist"), PhotoPlistKind::TIFF},
        {QT_TR_NOOP("Import Exif from Plist"), PhotoPlistKind::Exif},
        {QT_TR_NOOP("Import Exif and TIFF from Plist"), PhotoPlistKind::ExifAndTIFF},
        {QT_TR_NOOP("Import Exif and GPS from Plist"), PhotoPlistKind::ExifAndGPS},
        {QT_TR_NOOP("Import All Photo Metadata from Plist"), PhotoPlistKind::All}};
    for (const auto& [title, kind] : photoImports) {
        addImport(tr(title), tr("Please select plist to import."),
                  [this, kind = kind](const QString& plist, const IKImageItemList& items,
                                      OutputBatch& batch, const BatchProgress& p) {
                      return importPhotoPlist(plist, kind, items, storageContext(), batch, p);
                  });
    }
    addImport(tr("Import Template"), tr("Please select plist to import."),
              [this](const QString& plist, const IKImageItemList& items, OutputBatch& batch,
                     const BatchProgress& p) {
                  return ImportTemplateDataPlistAction(plist, items, storageContext(), batch, p);
              });
    addImport(tr("Reload Metadata"), tr("Please select extracted metadata plist to reload."),
              [this](const QString& plist, const IKImageItemList& items, OutputBatch& batch,
                     const BatchProgress& p) {
                  return ReloadMetaDataPlistAction(plist, items, storageContext(), batch, p);
              });
    setupXmpSheet();
}

void AppDelegate::ShowRenameWindowAction(QObject* sender) {
    dispatched("ShowRenameWindowAction:");
    const IKImageItemList items = selectedItems();
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

    QProgressDialog progress(tr("Renaming..."), tr("Cancel"), 0, int(items.size()), m_window);
    progress.setWindowModality(Qt::WindowModal);
    *m_lastRename = renameItems(items, options(), progressIn(progress));
    m_undoRename->setEnabled(true);
    const IKImageItemList shown = mediaController->content();
    mediaController->setContent(shown);
    int renamed = 0;
    for (const RenameStep& s : *m_lastRename) renamed += s.ok() ? 1 : 0;
    if (m_window)
        m_window->showWriteResult(tr("%1 of %2 files renamed").arg(renamed).arg(items.size()),
                                  QString(), storagelocation);
}

void AppDelegate::UndoRenameAction(QObject* sender) {
    dispatched("UndoRenameAction:");
    undoRename(*m_lastRename, localPhotoItemArray);
    m_lastRename->clear();
    m_undoRename->setEnabled(false);
    const IKImageItemList shown = mediaController->content();
    mediaController->setContent(shown);
}

void AppDelegate::EditvideofileDateInfoAction(QObject* sender) {
    dispatched("EditvideofileDateInfoAction:");
    const IKImageItemList items = selectedItems();
    if (items.isEmpty()) return showNothingSelected();
    QDialog dialog(m_window);
    dialog.setObjectName(QStringLiteral("changeMutiDateWindow"));
    dialog.setWindowTitle(tr("Change Dates"));
    auto* form = new QFormLayout(&dialog);
    QString first = items.first()->shootDateStr;
    if (first.split(QLatin1Char(' ')).size() == 3) first = first.section(QLatin1Char(' '), 0, 1);
    if (first.isEmpty()) first = items.first()->fileCreateDateStr;
    auto* mutSetDatelab = new QLineEdit(first);
    mutSetDatelab->setToolTip(tr("Leave empty to shift each file's own date instead."));
    auto* AddDateNumBtn = new QCheckBox(tr("Step the date from file to file by"));
    auto* AddDateNumlab = new QLineEdit(QStringLiteral("1"));
    auto* AddDateUnitBtn = new QComboBox;
    // The unit is passed on by its English name.
    for (const char* unit : {QT_TR_NOOP("Second"), QT_TR_NOOP("Minute"), QT_TR_NOOP("Hour")})
        AddDateUnitBtn->addItem(tr(unit), QString::fromLatin1(unit));
    auto* AddTimeBtn = new QRadioButton(tr("Add Time"));
    auto* RemoveTimeBtn = new QRadioButton(tr("Subtract Time"));
    AddTimeBtn->setChecked(true);
    std::array<QSpinBox*, 6> amounts{};
    const char* const names[] = {QT_TR_NOOP("Years"), QT_TR_NOOP("Months"),  QT_TR_NOOP("Days"),
                                 QT_TR_NOOP("Hours"), QT_TR_NOOP("Minutes"), QT_TR_NOOP("Seconds")};
    auto* created = new QCheckBox(tr("Change the file creation date of copies instead"));
    created->setToolTip(tr("Linux cannot set a creation date: it becomes the modification date."));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    AddDateNumBtn->setToolTip(tr("Each file's date is later than the one before by this much"));
    AddDateNumlab->setToolTip(tr("The step between two files' dates"));
    AddDateNumlab->setAccessibleName(tr("Step"));
    AddDateUnitBtn->setToolTip(tr("The unit of the step"));
    AddTimeBtn->setToolTip(tr("Shift each file's own date later"));
    RemoveTimeBtn->setToolTip(tr("Shift each file's own date earlier"));
    for (QAbstractButton* b : buttons->buttons())
        b->setToolTip(b == buttons->button(QDialogButtonBox::Ok) ? tr("Change the dates")
                                                                 : tr("Close without changes"));
    form->addRow(tr("Date (yyyy:MM:dd HH:mm:ss):"), mutSetDatelab);
    form->addRow(AddDateNumBtn, AddDateNumlab);
    form->addRow(tr("Unit:"), AddDateUnitBtn);
    form->addRow(AddTimeBtn, RemoveTimeBtn);
    for (int i = 0; i < 6; ++i) {
        amounts[i] = new QSpinBox;
        amounts[i]->setRange(-100000, 100000);
        amounts[i]->setToolTip(tr("%1 to add or subtract").arg(tr(names[i])));
        form->addRow(tr(names[i]), amounts[i]);
    }
    form->addRow(created);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted) return;

    BatchDateChange change;
    change.fixedDate = mutSetDatelab->text().trimmed();
    change.step = AddDateNumBtn->isChecked();
    change.stepCount = AddDateNumlab->text();
    change.stepUnit = AddDateUnitBtn->currentData().toString();
    change.add = AddTimeBtn->isChecked();
    qint32* const fields[] = {&change.years, &change.months,  &change.days,
                              &change.hours, &change.minutes, &change.seconds};
    for (int i = 0; i < 6; ++i) *fields[i] = amounts[i]->value();
    if (const QString problem = batchDateProblem(change); !problem.isEmpty()) {
        if (m_quietAlerts) return;
        QMessageBox box(QMessageBox::Warning, tr("Invalid date format"), tr(qPrintable(problem)),
                        QMessageBox::NoButton, m_window);
        box.addButton(tr(" Ok "), QMessageBox::AcceptRole);
        box.exec();
        return;
    }
    QProgressDialog progress(tr("Changing dates..."), tr("Cancel"), 0, int(items.size()), m_window);
    progress.setWindowModality(Qt::WindowModal);
    OutputBatch batch;
    const QList<VideoWriteResult> results =
        created->isChecked() ? ClickMutiCreatedDateChangedSaveAction(
                                   items, change, storageContext(), batch, progressIn(progress))
                             : ClickMutiDateChangedSaveAction(items, change, storageContext(),
                                                              batch, progressIn(progress));
    for (const VideoWriteResult& r : results) reportWrite(r);
}
