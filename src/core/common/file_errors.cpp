// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/file_errors.h"
#include "core/common/ui_texts.h"

#include <cerrno>
#include <cstring>

QString plainFileError(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            return WriteResult::tr("the disk is full");
        case EACCES:
        case EPERM:
            return WriteResult::tr("permission denied");
        case EROFS:
            return WriteResult::tr("the disk is read-only");
        case ENOENT:
            return WriteResult::tr("the file or folder no longer exists");
        case EIO:
            return WriteResult::tr("the disk reported a read or write error");
        case EFBIG:
            return WriteResult::tr("the file is too large for the disk's file system");
        case ENAMETOOLONG:
            return WriteResult::tr("the file name is too long");
        case ENOTCONN:
        case ETIMEDOUT:
        case ESTALE:
            return WriteResult::tr("the network disk is not reachable");
        default:
            return QString::fromLocal8Bit(std::strerror(error)).toLower();
    }
}
