// SPDX-License-Identifier: GPL-3.0-or-later
// The update check over documents given as data: addresses (the command-line
// test serves them over HTTP on loopback) and a refused loopback connection.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

#include "core/app/update_check.h"
#include "media_fixtures.h"

namespace {

QByteArray plist(const QByteArray& dict) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + dict +
           "</plist>";
}

UpdateAnswer check(const QUrl& url, const QString& current) {
    UpdateCheck check;
    UpdateAnswer answer;
    QEventLoop loop;
    QObject::connect(&check, &UpdateCheck::answered, &loop, [&](const UpdateAnswer& a) {
        answer = a;
        loop.quit();
    });
    QTimer::singleShot(20000, &loop, [&] {
        ADD_FAILURE() << "no answer from " << url.toString().toStdString();
        loop.quit();
    });
    check.checkServerVersion(url, current);
    loop.exec();
    return answer;
}

}  // namespace

TEST(UpdateCheck, ComparesVersionsWithTheirDotsRemoved) {
    EXPECT_TRUE(CompareOneString("2.0.1", "2.0"));
    EXPECT_TRUE(CompareOneString("1.2.10", "1.3"));
    EXPECT_FALSE(CompareOneString("2.0", "2.0"));
    EXPECT_FALSE(CompareOneString("", "0.1.0"));
    EXPECT_FALSE(CompareOneString("99999999999999", "2147483647"));  // capped, not wrapped
}

TEST(UpdateCheck, AnswersWhatTheDocumentSays) {
    ensureGuiApplication();
    const QByteArray newer = plist(
        "<dict><key>lastestVersion</key><string>2.0.1</string>"
        "<key>WhatsNew</key><string>*Fixed crash*Faster import</string></dict>");
    const struct {
        QByteArray body;
        UpdateAnswer::Kind kind;
    } cases[] = {
        {newer, UpdateAnswer::Newer},
        {plist("<dict><key>lastestVersion</key><string>2.0</string></dict>"),
         UpdateAnswer::NotNewer},
        {plist("<dict><key>WhatsNew</key><string>x</string></dict>"), UpdateAnswer::NotNewer},
        {plist("<array><string>2.0.1</string></array>"), UpdateAnswer::NotDictionary},
        {"<html>moved</html>", UpdateAnswer::NotDictionary},
    };
    const auto url = [](const QByteArray& body) {
        return QUrl(QStringLiteral("data:application/xml;base64,") +
                    QString::fromLatin1(body.toBase64()));
    };
    for (const auto& c : cases)
        EXPECT_EQ(check(url(c.body), QStringLiteral("2.0")).kind, c.kind) << c.body.constData();
    const UpdateAnswer answer = check(url(newer), QStringLiteral("2.0"));
    EXPECT_EQ(answer.lastestVersion, "2.0.1");
    EXPECT_EQ(answer.whatsnewString.split('\n'), QStringList({"", "Fixed crash", "Faster import"}));
    EXPECT_EQ(newVersionText("2.0.1"), "Brimlark Photo Stampel 2.0.1 is available.");

    const QUrl refused(QStringLiteral("http://127.0.0.1:1/product/tagsmithVersion.plist"));
    EXPECT_EQ(check(refused, QStringLiteral("2.0")).kind, UpdateAnswer::Failed);
}
