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
