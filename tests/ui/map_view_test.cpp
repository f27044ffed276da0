// SPDX-License-Identifier: GPL-3.0-or-later
// The map view: tile arithmetic, drawing without network, and tiles from a
// tile server on loopback.
#include <QBuffer>
#include <QImage>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include "ui/controls/map_tiles.h"
#include "ui/controls/map_view.h"

namespace {

// Answers every request with one solid-colour PNG tile and records the paths.
class TileServer : public QObject {
public:
    TileServer() {
        QImage tile(256, 256, QImage::Format_RGB32);
        tile.fill(QColor(0, 200, 0));
        QBuffer buffer(&m_png);
        buffer.open(QIODevice::WriteOnly);
        tile.save(&buffer, "PNG");
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection()) {
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
            }
        });
        m_server.listen(QHostAddress::LocalHost);
    }
    QString urlTemplate() const {
        return QString("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(m_server.serverPort());
    }
    QStringList paths;

private:
    void answer(QTcpSocket* socket) {
        const QByteArray request = socket->readAll();
        const QList<QByteArray> words = request.split(' ');
        if (words.size() > 1) paths.append(QString::fromLatin1(words[1]));
        socket->write(
            "HTTP/1.1 200 OK\r\nContent-Type: image/png\r\nConnection: close\r\nContent-Length: " +
            QByteArray::number(m_png.size()) + "\r\n\r\n" + m_png);
        socket->disconnectFromHost();
    }
    QTcpServer m_server;
    QByteArray m_png;
};

bool isPinRed(const QColor& c) {
    return c.red() > 180 && c.green() < 100 && c.blue() < 100;
}

}  // namespace

class MapViewTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void tileArithmetic() {
        // Paris at zoom 13: loadsTilesFromTheServer. South and west land in the lower and left
        // halves.
        const QPointF sydney = MapTiles::tileCoordinate(-33.8688, 151.2093, 2);
        QVERIFY(sydney.x() > 2 && sydney.y() > 2);
        // The poles are clamped instead of giving infinities.
        QVERIFY(std::isfinite(MapTiles::tileCoordinate(90, 0, 5).y()));
        QCOMPARE(MapTiles::coordinateCaption(-33.8688, 151.2093), "-33.868800, 151.209300");
    }

    void drawsPinWithoutNetwork() {
        MapView map;
        map.setTileUrlTemplate("http://127.0.0.1:1/{z}/{x}/{y}.png");  // nothing listens there
        map.resize(300, 200);
        map.setPin(48.8566, 2.3522);
        const QImage shot = map.grab().toImage();
        QVERIFY(isPinRed(shot.pixelColor(150, 100 - 12)));  // the pin's body above its point
        QVERIFY(!isPinRed(shot.pixelColor(20, 20)));        // background elsewhere
        QCOMPARE(shot.pixelColor(150, 195).alpha(), 255);   // caption band drawn
        QCOMPARE(map.loadedTileCount(), 0);
    }

    void loadsTilesFromTheServer() {
        TileServer server;
        MapView map;
        map.setTileUrlTemplate(server.urlTemplate());
        map.resize(300, 200);
        map.setZoom(13);
        map.setPin(48.8566, 2.3522);
        QSignalSpy loaded(&map, &MapView::tileLoaded);
        map.grab();  // a paint asks for the visible tiles
        QVERIFY(loaded.wait(5000));
        // The first tile to arrive need not be the one under the pin.
        QTRY_VERIFY_WITH_TIMEOUT(server.paths.contains("/13/4149/2818.png"), 5000);
        // The tile under the pin shows once it has arrived.
        QTRY_COMPARE_WITH_TIMEOUT(map.grab().toImage().pixelColor(150 + 40, 100 + 40),
                                  QColor(0, 200, 0), 5000);
        const QImage shot = map.grab().toImage();
        QVERIFY(isPinRed(shot.pixelColor(150, 100 - 12)));  // under the pin
    }
};

QTEST_MAIN(MapViewTest)
#include "map_view_test.moc"
