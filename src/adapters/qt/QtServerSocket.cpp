#include "adapters/qt/QtServerSocket.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

#include "adapters/qt/QtByteSocket.h"

namespace spectrino {

QtServerSocket::QtServerSocket() {
  server_.setProxy(QNetworkProxy::NoProxy);
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { TakeAll(); });
}

std::string QtServerSocket::Listen(const std::string& address, std::uint16_t port) {
  server_.close();
  QHostAddress where(QString::fromStdString(address));
  if (address == "localhost") where = QHostAddress(QHostAddress::LocalHost);
  if (where.isNull()) return "\"" + address + "\" is no numeric address";
  if (server_.listen(where, port)) return {};
  switch (server_.serverError()) {
    case QAbstractSocket::AddressInUseError:
      return "another program serves port " + std::to_string(port);
    case QAbstractSocket::SocketAddressNotAvailableError:
      return address + " is no address of this machine";
    case QAbstractSocket::SocketAccessError:
      return "port " + std::to_string(port) + " is not for users: choose one above 1023";
    default:
      return server_.errorString().toStdString();
  }
}

void QtServerSocket::TakeAll() {
  while (QTcpSocket* socket = server_.nextPendingConnection()) {
    Visitor visitor{
        .Socket = {}, .Address = socket->peerAddress().toString().toStdString(), .Port = socket->peerPort()};
    visitor.Socket = std::make_unique<QtByteSocket>(socket);
    if (const auto call = Accepted) call(std::move(visitor));
  }
}

}  // namespace spectrino
