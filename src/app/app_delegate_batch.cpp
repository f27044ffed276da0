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
#include <QPixmap>
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
#include "core/common/dates.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/photo/photo_picture.h"
#include "core/photo/photo_properties.h"
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

// The date dialog's picture case: a photo first in the selection is shown
// with its original and digitized dates, before and after the edit. The
// creation-date change then moves each file by the interval between the
// original dates (the digitized date follows, as shown).
struct DatePicture {
    QLabel* beforeorignalDatelab = nullptr;
    QLineEdit* afterorignalDatelab = nullptr;  // null: no picture case
};

DatePicture addDatePicture(QFormLayout& form, const IKImageItem& first, QCheckBox& created) {
    if (!isImagePath(first.filePath)) return {};
    const QImage image = loadPhotoPicture(first.filePath, 240);
    if (image.isNull()) return {};
    auto* dateImageview = new QLabel;
    dateImageview->setObjectName(QStringLiteral("dateImageview"));
    dateImageview->setPixmap(QPixmap::fromImage(image));
    dateImageview->setAccessibleName(first.fileName);
    dateImageview->setToolTip(first.fileName);
    form.addRow(dateImageview);
    const QVariantMap exif =
        readPhotoProperties(first.filePath, false).properties.value(PhotoGroup::Exif).toMap();
    const QString original = propertyText(exif, "DateTimeOriginal");
    const QString digitized = propertyText(exif, "DateTimeDigitized");
    auto* beforeorignalDatelab = new QLabel(original);
    auto* beforediginalDatelab = new QLabel(digitized);
    auto* afterorignalDatelab = new QLineEdit(original);
    auto* afterdiginalDatelab = new QLineEdit(digitized);
    afterdiginalDatelab->setReadOnly(true);
    const std::pair<QWidget*, const char*> fields[] = {
        {beforeorignalDatelab, "beforeorignalDatelab"},
        {beforediginalDatelab, "beforediginalDatelab"},
        {afterorignalDatelab, "afterorignalDatelab"},
        {afterdiginalDatelab, "afterdiginalDatelab"}};
    for (const auto& [widget, name] : fields) widget->setObjectName(QLatin1String(name));
    beforeorignalDatelab->setToolTip(AppDelegate::tr("The photo's original date as it is"));
    beforediginalDatelab->setToolTip(AppDelegate::tr("The photo's digitized date as it is"));
    afterorignalDatelab->setToolTip(
        AppDelegate::tr("Edit the original date: every file's creation date moves by the same "
                        "interval"));
    afterorignalDatelab->setAccessibleName(AppDelegate::tr("Original date after"));
    afterdiginalDatelab->setToolTip(
        AppDelegate::tr("The digitized date moves by the same interval"));
    afterdiginalDatelab->setAccessibleName(AppDelegate::tr("Digitized date after"));
    form.addRow(AppDelegate::tr("Original date:"), beforeorignalDatelab);
    form.addRow(AppDelegate::tr("Digitized date:"), beforediginalDatelab);
    form.addRow(AppDelegate::tr("Original date after:"), afterorignalDatelab);
    form.addRow(AppDelegate::tr("Digitized date after:"), afterdiginalDatelab);
    QObject::connect(
        afterorignalDatelab, &QLineEdit::textChanged, afterdiginalDatelab,
        [=](const QString& after) {
            const QDateTime from = dateFromText(original);
            const QDateTime to = dateFromText(after.trimmed());
            const QDateTime moved = dateFromText(digitized);
            afterdiginalDatelab->setText(from.isValid() && to.isValid() && moved.isValid()
                                             ? dateText(moved.addSecs(from.secsTo(to)))
                                             : QString());
        });
    // Photos have no recorded-date change here: theirs is the creation date.
    created.setChecked(true);
    if (original.isEmpty()) return {};  // no original date: the usual ways apply
    return {beforeorignalDatelab, afterorignalDatelab};
}

}  // namespace

IKImageItemList AppDelegate::batchSelection() const {
    return photoMode() ? selectedPhotoItems() : selectedItems();
}

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
            const IKImageItemList items = batchSelection();
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
        const IKImageItemList items = batchSelection();
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
            const IKImageItemList items = batchSelection();
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

void AppDelegate::EditvideofileDateInfoAction(QObject* sender) {
    dispatched("EditvideofileDateInfoAction:");
    const IKImageItemList items = batchSelection();
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
    const DatePicture picture = addDatePicture(*form, *items.first(), *created);
    form->addRow(buttons);
    const std::pair<QWidget*, const char*> dateNames[] = {
        {mutSetDatelab, "mutSetDatelab"}, {AddDateNumBtn, "AddDateNumBtn"},
        {AddDateNumlab, "AddDateNumlab"}, {AddDateUnitBtn, "AddDateUnitBtn"},
        {AddTimeBtn, "AddTimeBtn"},       {RemoveTimeBtn, "RemoveTimeBtn"},
        {created, "createdDateBtn"}};
    for (const auto& [widget, name] : dateNames) widget->setObjectName(QLatin1String(name));
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
    if (picture.afterorignalDatelab) {
        change.pictureShown = true;
        change.beforeOriginal = picture.beforeorignalDatelab->text();
        change.afterOriginal = picture.afterorignalDatelab->text().trimmed();
    }
    if (const QString problem = batchDateProblem(change, created->isChecked());
        !problem.isEmpty()) {
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
