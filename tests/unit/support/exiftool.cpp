// SPDX-License-Identifier: GPL-3.0-or-later
#include "exiftool.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include "media_fixtures.h"

namespace {

QByteArray exiftool(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral("exiftool"), args);
    return p.waitForFinished(60000) ? p.readAllStandardOutput() : QByteArray();
}

}  // namespace

QJsonObject exiftoolTags(const QString& path, const QStringList& options) {
    const QJsonArray array = QJsonDocument::fromJson(exiftool(words("-j -G1 -a -charset utf8") +
                                                              options + QStringList{path}))
                                 .array();
    return array.isEmpty() ? QJsonObject() : array.first().toObject();
}

QByteArray exiftoolBinary(const QString& path, const QString& tag) {
    return exiftool({QStringLiteral("-b"), QLatin1Char('-') + tag, path});
}

QString exiftoolValidation(const QString& path) {
    return QString::fromUtf8(
               exiftool(words("-validate -warning -error -a -s3") + QStringList{path}))
        .trimmed();
}

QString exiftoolFixture(const QString& name, const QString& source, const QStringList& args) {
    const QString path = fixtureDir() + QLatin1Char('/') + name;
    if (QFileInfo(path).size() > 0) return path;
    const QString partial =
        fixtureDir() + QStringLiteral("/.partial-%1-").arg(QCoreApplication::applicationPid()) +
        name;
    QFile::remove(partial);
    if (source.isEmpty() || !QFile::copy(source, partial)) return {};
    if (!runTool(QStringLiteral("exiftool"),
                 words("-q -overwrite_original") + args + QStringList{partial})) {
        QFile::remove(partial);
        return {};
    }
    QFile::remove(path);
    return QFile::rename(partial, path) ? path : QString();
}
