// A simulated K4 on two ports of the loopback address: CAT and panadapter stream.
// Serves; what it answers is K4Radio's.
#pragma once

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QVector>
#include <memory>

#include "sim/k4/K4Radio.h"

namespace spectrino {

/// What goes wrong on purpose.
struct K4Faults {
  int DelayMs = 0;          ///< before each answer
  int SplitBytes = 0;       ///< writes leave in pieces of so many bytes; 0: whole
  int DropEvery = 0;        ///< every n-th write is lost
  bool Garbage = false;     ///< random bytes between frames and replies
  double CloseAfterS = 0;   ///< the radio goes away
  double SilentAfterS = 0;  ///< it stays connected and says nothing more
  bool RefusePan = false;   ///< the panadapter port is closed
};

class K4SimServer final : public QObject {
  Q_OBJECT
 public:
  struct Options {
    bool IsK4D = false;
    double RateHz = 20;   ///< frames a second of each display
    quint16 CatPort = 0;  ///< 0: any free one
    quint16 PanPort = 0;
    bool Operator = false;  ///< somebody turns the VFO now and then
    K4Faults Faults{};
  };
  explicit K4SimServer(const Options& options, QObject* parent = nullptr);
  ~K4SimServer() override;

  /// False when a port is taken.
  [[nodiscard]] bool Start();
  [[nodiscard]] quint16 CatPort() const { return cat_.serverPort(); }
  [[nodiscard]] quint16 PanPort() const { return pan_.serverPort(); }
  [[nodiscard]] K4Radio& Radio() { return radio_; }

 private:
  struct Client {
    QTcpSocket* Socket = nullptr;
    QByteArray Received{};
    char Reports = '0';     ///< asked for by AI: from 1 on of what others changed, 5 of everything
    QByteArray Displays{};  ///< letters that are switched on
    /// Bytes that a fault holds back.
    std::shared_ptr<qint64> Delayed = std::make_shared<qint64>(0);
  };
  static constexpr int kMostClients = 8;

  void Accept(QTcpServer& server, QVector<Client>& clients, void (K4SimServer::*arrived)(Client&));
  void CatArrived(Client& client);
  void PanArrived(Client& client);
  void SendFrames();
  void Write(Client& client, const QByteArray& bytes);
  static bool TakesMore(const Client& client);
  [[nodiscard]] double Seconds() const { return static_cast<double>(time_.elapsed()) / 1000; }
  [[nodiscard]] bool Silent() const;

  Options options_;
  K4Radio radio_;
  QTcpServer cat_;
  QTcpServer pan_;
  QVector<Client> catClients_;
  QVector<Client> panClients_;
  QTimer frames_;
  QTimer operator_;
  QElapsedTimer time_;
  QTcpSocket* asking_ = nullptr;
  int writes_ = 0;
};

}  // namespace spectrino
