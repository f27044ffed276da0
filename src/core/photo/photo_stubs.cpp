// Placeholders so the window and the command line link against the photo
// core while it is being built; each answers that photos are not supported
// yet. Replaced function by function by the real implementations.
#include "core/batch/date_check.h"
#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_import.h"
#include "core/photo/photo_removal.h"

namespace {
const QString kNotYet = QStringLiteral("photos are not supported yet");
PhotoWriteResult notYet(const IKImageItem& item) {
    return PhotoWriteResult::skippedFile(item.filePath, kNotYet);
}
}  // namespace

PhotoSource readPhotoProperties(const QString&) {
    return {{}, {}, 0, false, kNotYet};
}
PhotoSource readPhotoPropertiesFromData(const QByteArray&) {
    return {{}, {}, 0, false, kNotYet};
}
PhotoWriteOutcome writePhotoCopy(const QString&, const QString&, const PropertyEdit&) {
    return {PhotoWriteStatus::Failed, kNotYet};
}
PhotoEditorState photoEditorStateFor(const PropertyDictionary&) {
    return {};
}
PhotoPanelTexts photoPanelTextsFor(const IKImageItem&, const PropertyDictionary&) {
    return {};
}
bool photoPosition(const PropertyDictionary&, double*, double*) {
    return false;
}
PropertyEdit applyChangeEdit(const PhotoEditorState&, PhotoMode) {
    return {};
}
PhotoWriteResult ClickApplyChangeAction(const IKImageItem& item, const PhotoEditorState&, PhotoMode,
                                        const StorageContext&, OutputBatch&) {
    return notYet(item);
}
PhotoWriteResult ClickDateChangedSaveAction(const IKImageItem& item, const QString&, const QString&,
                                            PhotoMode, const StorageContext&, OutputBatch&) {
    return notYet(item);
}
PhotoWriteResult ClickSaveChangeGPSAction(const IKImageItem& item, const PhotoEditorState&, bool,
                                          PhotoMode, const StorageContext&, OutputBatch&) {
    return notYet(item);
}
QStringList photoRemovalGroups(PhotoRemoval, PhotoMode) {
    return {};
}
QString photoRemovalOutputName(PhotoRemoval, PhotoMode, const QString& fileName) {
    return fileName;
}
bool photoRemovalHasRawFallback(PhotoRemoval) {
    return false;
}
PhotoWriteResult removePhotoMetadata(const IKImageItem& item, PhotoRemoval, PhotoMode,
                                     const StorageContext&, OutputBatch&) {
    return notYet(item);
}
void ExifSegmentReader::ReadExifDataFromPiture(const QString&) {}
QString getHexString(const QByteArray&, qint64, int) {
    return {};
}
qint32 DemaNumberFormHexChar(const QString&, int) {
    return 0;
}
QString GetStringFormChar(const QByteArray&) {
    return {};
}
QString stringFromHex(const QString&) {
    return {};
}
QString stringToHex(const QString&) {
    return {};
}
QList<PropertyTreeRow> propTree(const PropertyDictionary&) {
    return {};
}
IKImageItemPtr importPhotoFile(const QString&) {
    return nullptr;
}
void fillPhotoRecord(IKImageItem&, const PhotoSource&) {}
bool CheckDateFormatWithDateString(const QString&) {
    return false;
}
