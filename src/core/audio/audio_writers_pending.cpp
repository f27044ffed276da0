// Audio writers that are not built yet: each leaves the file alone and says
// so. A writer's stub goes when the writer itself is added.
#include "core/audio/audio_writers.h"

namespace {

AudioWriteResult notYet(const IKImageItem& item) {
    return AudioWriteResult::skippedFile(
        item.filePath, QStringLiteral("saving this kind of audio file is not supported yet"));
}

}  // namespace

// AIFF and CAF.

AudioWriteResult writeAiffAuidoMetadatawithFileItem(const IKImageItem& item,
                                                    const AudioEditorState&, const StorageContext&,
                                                    OutputBatch&) {
    return notYet(item);
}

AudioWriteResult SaveChangedCAFAuidoExifItem(const IKImageItem& item, const AudioEditorState&,
                                             const StorageContext&, OutputBatch&) {
    return notYet(item);
}

// MP3, WAV and FLAC.

AudioWriteResult SaveChangedMp3MetadateItem(const IKImageItem& item, const AudioEditorState&,
                                            const StorageContext&, OutputBatch&) {
    return notYet(item);
}

AudioWriteResult ReloadMp3MetadateItem(const IKImageItem& item, const QVariantMap&,
                                       const AudioEditorState&, const StorageContext&,
                                       OutputBatch&) {
    return notYet(item);
}

AudioWriteResult SetMp3MetadateItem(const IKImageItem& item, const QString&, const StorageContext&,
                                    OutputBatch&) {
    return notYet(item);
}

AudioWriteResult RemoveMp3metadataItem(const IKImageItem& item, const AudioEditorState&,
                                       const StorageContext&, OutputBatch&) {
    return notYet(item);
}

AudioWriteResult writeWAVAuidoMetadatawithFileItem(const IKImageItem& item, const AudioEditorState&,
                                                   const StorageContext&, OutputBatch&) {
    return notYet(item);
}

AudioWriteResult SaveChangedFlaCAuidoExifItem(const IKImageItem& item, const AudioEditorState&,
                                              const StorageContext&, OutputBatch&) {
    return notYet(item);
}

AudioWriteResult ReloadChangedFlaCAuidoExifItem(const IKImageItem& item, const QVariantMap&,
                                                const AudioEditorState&, const StorageContext&,
                                                OutputBatch&) {
    return notYet(item);
}

AudioWriteResult SetFlaCAuidoExifItem(const IKImageItem& item, const QString&,
                                      const AudioEditorState&, const StorageContext&,
                                      OutputBatch&) {
    return notYet(item);
}
