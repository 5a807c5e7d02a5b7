#include "adapters/qt/QtDatagramSocket.h"

#include <QHostAddress>
#include <QMetaObject>
#include <QNetworkProxy>
#include <QPointer>
#include <QUdpSocket>

namespace spectrino {

namespace {
/// In one turn of the event loop: whoever floods the port must not stop the window.
constexpr int kMostAtOnce = 32;
}  // namespace

// The signal that led here may still be on the stack.
void QtDatagramSocket::Later::operator()(QUdpSocket* socket) const {
  socket->disconnect();
  socket->close();
  socket->deleteLater();
}

QtDatagramSocket::QtDatagramSocket() = default;
QtDatagramSocket::~QtDatagramSocket() = default;

std::string QtDatagramSocket::Open(std::uint16_t port) {
  Close();
  std::unique_ptr<QUdpSocket, Later> socket(new QUdpSocket);
  socket->setProxy(QNetworkProxy::NoProxy);
  if (!socket->bind(QHostAddress::LocalHost, port, QAbstractSocket::DontShareAddress))
    return socket->error() == QAbstractSocket::AddressInUseError
               ? "another program receives at port " + std::to_string(port)
               : socket->errorString().toStdString();
  QObject::connect(socket.get(), &QUdpSocket::readyRead, socket.get(), [this] { Deliver(); });
  packet_.resize(kMostBytes);
  socket_ = std::move(socket);
  return {};
}

void QtDatagramSocket::Close() {
  socket_.reset();
}

// A handler may close us: the old socket is gone then, and nothing of ours is touched again.
void QtDatagramSocket::Deliver() {
  const QPointer<QUdpSocket> socket = socket_.get();
  for (int i = 0; i < kMostAtOnce; ++i) {
    if (socket == nullptr || socket->state() != QUdpSocket::BoundState || !socket->hasPendingDatagrams())
      return;
    const qint64 size = socket->pendingDatagramSize();
    QHostAddress sender;
    const qint64 read = socket->readDatagram(reinterpret_cast<char*>(packet_.data()),
                                             static_cast<qint64>(packet_.size()), &sender);
    if (read < 0 || size > read || !sender.isLoopback()) continue;
    if (const auto call = Received) call(std::span(packet_).first(static_cast<std::size_t>(read)));
  }
  if (socket != nullptr && socket->hasPendingDatagrams())
    QMetaObject::invokeMethod(
        socket.get(),
        [this, alive = std::weak_ptr(alive_)] {
          if (!alive.expired()) Deliver();
        },
        Qt::QueuedConnection);
}

}  // namespace spectrino
