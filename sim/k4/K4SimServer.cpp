#include "sim/k4/K4SimServer.h"

#include <QHostAddress>
#include <QPointer>
#include <QRandomGenerator>
#include <QtMath>

namespace spectrino {
namespace {
constexpr qsizetype kMostText = 4096;
constexpr qint64 kMostWaiting = 1 << 20;  // bytes for one client
constexpr int kOperatorMs = 1500;
}  // namespace

K4SimServer::K4SimServer(const Options& options, QObject* parent)
    : QObject(parent), options_(options), radio_(options.IsK4D) {
  time_.start();
  radio_.Changed = [this](const std::string& reply) {
    for (Client& client : catClients_) {
      if (client.Reports == '5' || (client.Reports > '0' && client.Socket != asking_))
        Write(client, QByteArray::fromStdString(reply));
    }
  };
  connect(&cat_, &QTcpServer::newConnection, this,
          [this] { Accept(cat_, catClients_, &K4SimServer::CatArrived); });
  connect(&pan_, &QTcpServer::newConnection, this,
          [this] { Accept(pan_, panClients_, &K4SimServer::PanArrived); });
  connect(&frames_, &QTimer::timeout, this, &K4SimServer::SendFrames);
  frames_.setTimerType(Qt::PreciseTimer);
  frames_.setInterval(qMax(5, qRound(1000 / qBound(1.0, options.RateHz, 200.0))));
  connect(&operator_, &QTimer::timeout, this,
          [this] { radio_.TurnVfoA(Seconds() / 30 - qFloor(Seconds() / 30) < 0.5 ? 100 : -100); });
  if (options.Operator) operator_.start(kOperatorMs);
  if (options.Faults.CloseAfterS > 0) {
    QTimer::singleShot(qRound(options.Faults.CloseAfterS * 1000), this, [this] {
      cat_.close();
      pan_.close();
      for (const Client& client : catClients_ + panClients_) client.Socket->abort();
    });
  }
}

K4SimServer::~K4SimServer() {
  for (const Client& client : catClients_ + panClients_) client.Socket->disconnect(this);
}

bool K4SimServer::Start() {
  if (!cat_.listen(QHostAddress::LocalHost, options_.CatPort)) return false;
  if (!options_.Faults.RefusePan && !pan_.listen(QHostAddress::LocalHost, options_.PanPort)) return false;
  return true;
}

bool K4SimServer::Silent() const {
  return options_.Faults.SilentAfterS > 0 && Seconds() > options_.Faults.SilentAfterS;
}

void K4SimServer::Accept(QTcpServer& server, QVector<Client>& clients,
                         void (K4SimServer::*arrived)(Client&)) {
  while (QTcpSocket* socket = server.nextPendingConnection()) {
    if (clients.size() >= kMostClients) {
      socket->abort();
      socket->deleteLater();
      continue;
    }
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    clients.push_back({.Socket = socket});
    const auto of = [&clients, socket]() -> Client* {
      for (Client& client : clients) {
        if (client.Socket == socket) return &client;
      }
      return nullptr;
    };
    connect(socket, &QTcpSocket::readyRead, this, [this, of, arrived, socket] {
      Client* client = of();
      if (client == nullptr) return;
      client->Received += socket->readAll();
      (this->*arrived)(*client);
    });
    // Queued: a write that breaks the connection must not take the client away from the loop that is writing.
    connect(
        socket, &QTcpSocket::disconnected, this,
        [this, &clients, socket] {
          clients.removeIf([socket](const Client& client) { return client.Socket == socket; });
          socket->deleteLater();
          if (panClients_.isEmpty()) frames_.stop();
        },
        Qt::QueuedConnection);
  }
}

void K4SimServer::CatArrived(Client& client) {
  const QPointer<QTcpSocket> socket = client.Socket;
  for (qsizetype end = client.Received.indexOf(';'); end >= 0; end = client.Received.indexOf(';')) {
    const QByteArray command = client.Received.left(end).trimmed().toUpper();
    client.Received.remove(0, end + 1);
    if (command.startsWith("AI")) {
      if (command.size() > 2)
        client.Reports = command[2];
      else
        Write(client, QByteArray("AI") + client.Reports + ";");
      continue;
    }
    if (command.isEmpty()) continue;
    asking_ = client.Socket;
    const std::string answer = radio_.Answer(command.toStdString(), Seconds());
    asking_ = nullptr;
    if (!answer.empty()) Write(client, QByteArray::fromStdString(answer));
    if (socket.isNull() || socket->state() != QTcpSocket::ConnectedState) return;
  }
  if (client.Received.size() > kMostText) client.Received.clear();
}

void K4SimServer::PanArrived(Client& client) {
  for (qsizetype end = client.Received.indexOf('\n'); end >= 0; end = client.Received.indexOf('\n')) {
    const QByteArray line = client.Received.left(end).trimmed();
    client.Received.remove(0, end + 1);
    if (line.size() != 2 || !QByteArray("ABYZ").contains(line[0])) continue;
    client.Displays.replace(line.left(1), "");
    if (line[1] == '1') client.Displays += line[0];
  }
  if (client.Received.size() > kMostText) client.Received.clear();
  if (!client.Displays.isEmpty() && !frames_.isActive()) frames_.start();
}

void K4SimServer::SendFrames() {
  for (const char display : {'A', 'Y', 'Z'}) {
    QByteArray frame;
    for (Client& client : panClients_) {
      // A client that does not read is not fed without end.
      if (!client.Displays.contains(display) || client.Socket->bytesToWrite() > kMostWaiting / 2) continue;
      if (frame.isEmpty()) frame = QByteArray::fromStdString(radio_.Frame(display, Seconds()));
      Write(client, frame);
    }
  }
}

/// False for a client that asks and never reads: it is let go, or its answers would fill the memory.
bool K4SimServer::TakesMore(const Client& client) {
  const auto waiting = [&client] { return client.Socket->bytesToWrite() + *client.Delayed; };
  if (waiting() > kMostWaiting) client.Socket->flush();
  if (waiting() > kMostWaiting) client.Socket->abort();
  return client.Socket->state() == QTcpSocket::ConnectedState;
}

void K4SimServer::Write(Client& client, const QByteArray& bytes) {
  if (!TakesMore(client)) return;
  const K4Faults& faults = options_.Faults;
  ++writes_;
  if (Silent() || (faults.DropEvery > 0 && writes_ % faults.DropEvery == 0)) return;
  QByteArray whole = bytes;
  if (faults.Garbage && writes_ % 5 == 0) {
    for (int i = 0; i < 37; ++i) whole.append(static_cast<char>(QRandomGenerator::global()->bounded(256)));
  }
  const QPointer<QTcpSocket> socket = client.Socket;
  const auto send = [socket, whole, piece = faults.SplitBytes] {
    if (socket.isNull()) return;
    for (qsizetype at = 0; at<whole.size(); at += piece> 0 ? piece : whole.size()) {
      socket->write(whole.mid(at, piece > 0 ? piece : whole.size()));
      if (piece > 0) socket->flush();
    }
  };
  if (faults.DelayMs <= 0) {
    send();
    return;
  }
  *client.Delayed += whole.size();
  QTimer::singleShot(faults.DelayMs, this, [send, delayed = client.Delayed, size = whole.size()] {
    *delayed -= size;
    send();
  });
}

}  // namespace spectrino
