#include "adapters/qt/QtByteSocket.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <QNetworkProxy>
#include <QPointer>
#include <QTcpSocket>

namespace spectrino {

namespace {

// A radio that lost power or its cable acknowledges nothing; without these the system would notice after a
// quarter of an hour while we send, and after two hours while we only listen.
constexpr int kUnacknowledgedMs = 10000;
constexpr int kSilenceBeforeProbeSeconds = 5;
constexpr int kProbeSeconds = 2;
constexpr int kProbes = 3;
constexpr qint64 kMostOfVisitor = 16 * 1024;

// A setting that the system refuses costs only the early notice.
void SetTcpOption(qintptr descriptor, int option, int value) {
  static_cast<void>(::setsockopt(static_cast<int>(descriptor), IPPROTO_TCP, option, &value, sizeof value));
}

/// What the user can do something about, in words of his; else the system's.
std::string Reason(const QTcpSocket& socket, bool wasConnected, bool everReached) {
  const std::string host = socket.peerName().toStdString();
  switch (wasConnected ? QTcpSocket::UnknownSocketError : socket.error()) {
    case QTcpSocket::HostNotFoundError:
      return "the name " + host + " is not known";
    case QTcpSocket::ConnectionRefusedError:
      return host + " refuses the connection: " + (everReached ? "is it still on?" : "is the port right?");
    case QTcpSocket::SocketTimeoutError:
      return host + " does not answer";
    case QTcpSocket::NetworkError:
      return host + " cannot be reached from here: is the network up, and the address right?";
    default:
      return socket.errorString().toStdString();
  }
}

}  // namespace

// The signal that led here may still be on the stack.
void QtByteSocket::Later::operator()(QTcpSocket* socket) const {
  socket->disconnect();
  socket->flush();
  socket->abort();
  socket->deleteLater();
}

QtByteSocket::QtByteSocket() = default;

QtByteSocket::QtByteSocket(QTcpSocket* accepted) : visitor_(true) {
  accepted->setParent(nullptr);
  accepted->setReadBufferSize(kMostOfVisitor);
  Attend(accepted);
  wasConnected_ = true;
  SetOptions();
  // What came before somebody attended is announced by nobody else.
  if (accepted->bytesAvailable() > 0)
    QMetaObject::invokeMethod(
        accepted, [this] { Deliver(); }, Qt::QueuedConnection);
}

QtByteSocket::~QtByteSocket() = default;

void QtByteSocket::Connect(const std::string& host, std::uint16_t port) {
  Close();
  QTcpSocket* socket = new QTcpSocket;
  Attend(socket);
  wasConnected_ = false;
  peer_ = {host, port};
  socket->setProxy(QNetworkProxy::NoProxy);
  socket->connectToHost(QString::fromStdString(host), port);
}

void QtByteSocket::Attend(QTcpSocket* socket) {
  socket_.reset(socket);
  QObject::connect(socket, &QTcpSocket::connected, socket, [this] { SetUp(); });
  QObject::connect(socket, &QTcpSocket::readyRead, socket, [this] { Deliver(); });
  QObject::connect(socket, &QTcpSocket::disconnected, socket, [this] { End(); });
  QObject::connect(socket, &QTcpSocket::errorOccurred, socket, [this](QTcpSocket::SocketError error) {
    if (error != QTcpSocket::RemoteHostClosedError) Fail();  // "disconnected" follows that one
  });
}

void QtByteSocket::Close() {
  socket_.reset();
}

void QtByteSocket::Send(std::string_view bytes) {
  if (!socket_ || socket_->state() != QTcpSocket::ConnectedState) return;
  // A visitor that closed its side behind its last request still reads: what waits in Qt's buffer would be
  // dropped with the news of that, what the system has leaves.
  if (visitor_ && socket_->bytesToWrite() == 0) {
    const ssize_t sent = ::send(static_cast<int>(socket_->socketDescriptor()), bytes.data(), bytes.size(),
                                MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  if (!bytes.empty()) socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::size_t QtByteSocket::Unsent() const {
  return socket_ ? static_cast<std::size_t>(socket_->bytesToWrite()) : 0;
}

void QtByteSocket::SetUp() {
  wasConnected_ = true;
  reached_ = peer_;
  SetOptions();
  if (const auto call = Connected) call();
}

void QtByteSocket::SetOptions() {
  socket_->setSocketOption(QTcpSocket::LowDelayOption, 1);
  socket_->setSocketOption(QTcpSocket::KeepAliveOption, 1);
  const qintptr descriptor = socket_->socketDescriptor();
  SetTcpOption(descriptor, TCP_KEEPIDLE, kSilenceBeforeProbeSeconds);
  SetTcpOption(descriptor, TCP_KEEPINTVL, kProbeSeconds);
  SetTcpOption(descriptor, TCP_KEEPCNT, kProbes);
  SetTcpOption(descriptor, TCP_USER_TIMEOUT, kUnacknowledgedMs);
}

// A handler may close, connect anew or destroy us: the old socket is then empty, and nothing of ours is
// touched again. It may also turn the event loop, in which what arrives is not announced a second time.
void QtByteSocket::Deliver() {
  const QPointer<QTcpSocket> socket = socket_.get();
  while (socket != nullptr && socket->bytesAvailable() > 0) {
    const QByteArray bytes = socket->readAll();
    if (const auto call = DataArrival) {
      call(
          {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
    }
  }
}

void QtByteSocket::Fail() {
  const std::string text = Reason(*socket_, wasConnected_, reached_ == peer_);
  Close();
  if (const auto call = Error) call(text);
}

void QtByteSocket::End() {
  const QPointer<QTcpSocket> socket = socket_.get();
  Deliver();
  if (socket == nullptr || !socket->isOpen()) return;
  Close();
  if (const auto call = Closed) call();
}

}  // namespace spectrino
