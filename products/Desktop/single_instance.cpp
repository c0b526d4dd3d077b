#include "single_instance.h"

#include <unistd.h>

#include <QDataStream>
#include <QLocalSocket>

namespace {

constexpr int kPatience = 2000; ///< milliseconds
constexpr quint32 kMostFiles = 10000;
constexpr QByteArrayView kTaken = "taken\n";

/// The socket of the user's session: one for each display, so that a window never opens elsewhere.
QString UserSocket() {
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty())
        display = qEnvironmentVariable("DISPLAY");
    display.replace(QLatin1Char('/'), QLatin1Char('_'));
    const QString name = QStringLiteral("quorel-desktop-%1-%2").arg(getuid()).arg(display);
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
}

QDataStream& operator<<(QDataStream& stream, const FileTarget& file) {
    return stream << QByteArray::fromStdString(file.m_Path) << qint32(file.m_Place.m_Row)
                  << qint32(file.m_Place.m_Column);
}

QDataStream& operator>>(QDataStream& stream, FileTarget& file) {
    QByteArray path;
    qint32 row = 0, column = 0;
    stream >> path >> row >> column;
    file = {path.toStdString(), {row, column}};
    return stream;
}

/// @return false while the message isn't whole
bool ReadFiles(QLocalSocket& peer, std::vector<FileTarget>& files) {
    QDataStream stream(&peer);
    stream.startTransaction();
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < std::min(count, kMostFiles) && stream.status() == QDataStream::Ok; ++i)
        stream >> files.emplace_back();
    return stream.commitTransaction();
}

} // namespace

SingleInstance::SingleInstance(QString name)
    : m_Name(name.isEmpty() ? UserSocket() : std::move(name)) {
    m_Server.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&m_Server, &QLocalServer::newConnection, &m_Server, [this] {
        while (QLocalSocket* peer = m_Server.nextPendingConnection())
            Serve(peer);
    });
}

bool SingleInstance::HandOver(const std::vector<FileTarget>& files) {
    QLocalSocket socket;
    socket.connectToServer(m_Name);
    if (!socket.waitForConnected(kPatience))
        return false;
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << static_cast<quint32>(files.size());
    for (const FileTarget& file : files)
        stream << file;
    socket.write(message);
    if (!socket.waitForBytesWritten(kPatience))
        return false;
    while (socket.bytesAvailable() < kTaken.size())
        if (!socket.waitForReadyRead(kPatience))
            return false;
    return socket.readAll() == kTaken;
}

bool SingleInstance::Listen(Take take) {
    m_Take = std::move(take);
    if (m_Server.listen(m_Name))
        return true;
    // Nobody answered there, so that it is left from a process that has ended.
    return QLocalServer::removeServer(m_Name) && m_Server.listen(m_Name);
}

void SingleInstance::Serve(QLocalSocket* peer) {
    QObject::connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
    QObject::connect(peer, &QLocalSocket::readyRead, peer, [this, peer] {
        std::vector<FileTarget> files;
        if (!ReadFiles(*peer, files))
            return;
        peer->write(kTaken.data(), kTaken.size());
        peer->flush();
        m_Take(files);
    });
}
