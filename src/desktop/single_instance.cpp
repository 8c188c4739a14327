#include "desktop/single_instance.h"

#include <QCryptographicHash>
#include <QLocalSocket>

namespace vesko::desktop {
namespace {
constexpr int kAnswerWaitMs = 1000;
}  // namespace

QString SingleInstance::serverName(const Environment& environment) {
  const std::string user = environment("USER").value_or(environment("LOGNAME").value_or("user"));
  const std::string home = environment("VESKO_HOME").value_or("");
  const QByteArray hash =
      QCryptographicHash::hash(QByteArray::fromStdString(home), QCryptographicHash::Sha1).toHex();
  return QStringLiteral("vesko-desktop-%1-%2")
      .arg(QString::fromStdString(user), QString::fromLatin1(hash.left(12)));
}

bool SingleInstance::handOver(const QString& name, LaunchRequest request) {
  QLocalSocket socket;
  socket.connectToServer(name);
  if (!socket.waitForConnected(kAnswerWaitMs)) return false;
  const std::string_view message = messageOf(request);
  socket.write(message.data(), static_cast<qint64>(message.size()));
  if (!socket.waitForBytesWritten(kAnswerWaitMs)) return false;
  // The instance closes the connection once it has read the line.
  socket.waitForDisconnected(kAnswerWaitMs);
  return true;
}

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* socket = server_.nextPendingConnection()) take(socket);
  });
}

std::optional<QString> SingleInstance::listen(const QString& name) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (server_.listen(name)) return std::nullopt;
  // A socket file left by an instance that ended without closing it: nobody answered handOver.
  QLocalServer::removeServer(name);
  if (server_.listen(name)) return std::nullopt;
  return server_.errorString();
}

void SingleInstance::take(QLocalSocket* socket) {
  connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
  connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
    while (socket->canReadLine()) {
      const QByteArray line = socket->readLine(256);
      if (auto request = requestOfMessage(line.toStdString())) emit requested(*request);
      socket->disconnectFromServer();
    }
  });
}

}  // namespace vesko::desktop
