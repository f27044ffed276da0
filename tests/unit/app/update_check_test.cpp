// The update check against a version document served on loopback.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "core/app/update_check.h"
#include "media_fixtures.h"

namespace {

// Answers every request with `body` as one HTTP response.
class DocumentServer : public QTcpServer {
public:
    explicit DocumentServer(QByteArray body) : m_body(std::move(body)) {
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                socket->readAll();
                socket->write(
                    "HTTP/1.1 200 OK\r\nContent-Type: application/xml\r\nContent-Length: " +
                    QByteArray::number(m_body.size()) + "\r\nConnection: close\r\n\r\n" + m_body);
                socket->disconnectFromHost();
            });
        });
        listen(QHostAddress::LocalHost);
    }
    QUrl url() const {
        return QUrl(
            QStringLiteral("http://127.0.0.1:%1/product/tagsmithVersion.plist").arg(serverPort()));
    }

private:
    QByteArray m_body;
};

QByteArray plist(const QByteArray& dict) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + dict +
           "</plist>";
}

UpdateAnswer check(const QUrl& url, const QString& current) {
    UpdateCheck check;
    UpdateAnswer answer;
    answer.lastestVersion = QStringLiteral("unanswered");
    QEventLoop loop;
    QObject::connect(&check, &UpdateCheck::answered, &loop, [&](const UpdateAnswer& a) {
        answer = a;
        loop.quit();
    });
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
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

TEST(UpdateCheck, ReadsTheServedDocument) {
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
    for (const auto& c : cases) {
        DocumentServer server(c.body);
        const UpdateAnswer answer = check(server.url(), QStringLiteral("2.0"));
        EXPECT_EQ(answer.kind, c.kind) << c.body.constData();
    }
    DocumentServer server(newer);
    const UpdateAnswer answer = check(server.url(), QStringLiteral("2.0"));
    EXPECT_EQ(answer.lastestVersion, "2.0.1");
    EXPECT_EQ(answer.whatsnewString.split('\n'), QStringList({"", "Fixed crash", "Faster import"}));
    EXPECT_EQ(newVersionText("2.0.1"), "Brimlark Photo Stampel 2.0.1 is available.");

    const QUrl closed = server.url();
    server.close();
    EXPECT_EQ(check(closed, QStringLiteral("2.0")).kind, UpdateAnswer::Failed);
}
