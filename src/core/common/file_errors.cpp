#include "core/common/file_errors.h"

#include <cerrno>
#include <cstring>

QString plainFileError(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            return QStringLiteral("the disk is full");
        case EACCES:
        case EPERM:
            return QStringLiteral("permission denied");
        case EROFS:
            return QStringLiteral("the disk is read-only");
        case ENOENT:
            return QStringLiteral("the file or folder no longer exists");
        case EIO:
            return QStringLiteral("the disk reported a read or write error");
        case EFBIG:
            return QStringLiteral("the file is too large for the disk's file system");
        case ENAMETOOLONG:
            return QStringLiteral("the file name is too long");
        case ENOTCONN:
        case ETIMEDOUT:
        case ESTALE:
            return QStringLiteral("the network disk is not reachable");
        default:
            return QString::fromLocal8Bit(std::strerror(error)).toLower();
    }
}
