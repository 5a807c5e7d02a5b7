#include "app/ServerProbe.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>
#include <utility>

namespace spectrino {
namespace {

constexpr int kDeadlineMs = 1000;
// Answered by the server itself, however long its radio takes: "ChkVFO: 0".
constexpr const char* kQuestion = "+\\chk_vfo\n";
constexpr const char* kAnswer = "ChkVFO";

}  // namespace

bool IsThisMachine(const std::string& host) {
  const QString name = QString::fromStdString(host);
  return name.compare("localhost", Qt::CaseInsensitive) == 0 || QHostAddress(name).isLoopback();
}

std::string LoopbackOf(const std::string& host) {
  return QHostAddress(QString::fromStdString(host)).isNull() ? "127.0.0.1" : host;
}

void AskPort(const std::string& host, int port, QObject* context, std::function<void(PortHolder)> answered) {
  auto* socket = new QTcpSocket(context);
  const auto end = [socket, answered = std::move(answered)](PortHolder holder) {
    socket->disconnect();
    socket->deleteLater();
    answered(holder);
  };
  const auto unknown = [socket, end] {
    const bool taken =
        socket->state() == QAbstractSocket::ConnectedState || socket->property("taken").toBool();
    end(taken ? PortHolder::Another : PortHolder::Nobody);
  };
  QObject::connect(socket, &QTcpSocket::connected, socket, [socket] {
    socket->setProperty("taken", true);
    socket->write(kQuestion);
  });
  QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, end] {
    // Its first words are enough, and the last of another's may never come.
    const QByteArray text = socket->read(200);
    end(text.contains(kAnswer) ? PortHolder::CatServer : PortHolder::Another);
  });
  QObject::connect(socket, &QTcpSocket::errorOccurred, socket, unknown);
  auto* deadline = new QTimer(socket);
  QObject::connect(deadline, &QTimer::timeout, socket, unknown);
  deadline->setSingleShot(true);
  deadline->start(kDeadlineMs);
  socket->connectToHost(QString::fromStdString(host), static_cast<quint16>(port));
}

}  // namespace spectrino
