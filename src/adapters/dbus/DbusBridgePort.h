// BridgePort on the session's message bus:
//
//   service org.spectrino.Bridge, object /org/spectrino/Bridge, interface org.spectrino.Bridge1
//     properties  VfoAHz VfoBHz Offset Shift Bandwidth Bandwidth2 Trouble
//                 (s, read), told by PropertiesChanged; one that is not there is empty
//     method      Command(s text)
//
// Starts no service: who is not running is missing. One that runs and does not answer is asked again after 1,
// 2, 4, 8, then every 15 s, and at once when it is heard.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <QVariantMap>
#include <memory>
#include <string>

#include "platform/BridgePort.h"

class QDBusPendingCallWatcher;

namespace spectrino {

class DbusBridgePort final : public QObject, public BridgePort {
  Q_OBJECT

 public:
  DbusBridgePort();
  ~DbusBridgePort() override;

  void Open() override;
  void Close() override;
  void Command(std::string_view text) override;

 private slots:
  void PropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& withdrawn);

 private:
  void OwnerChanged(bool was, bool is);
  void Ask();
  void TakeAnswer(const QDBusPendingCallWatcher& call);
  void Leave(const std::string& why);
  void Take(const QVariantMap& items);

  QDBusConnection bus_;
  std::unique_ptr<QDBusServiceWatcher> service_;
  QTimer again_;
  std::size_t tries_ = 0;  ///< that failed since it came
  bool found_ = false;
  bool asking_ = false;  ///< for all items; the answer is not there yet
  std::string why_;      ///< as told by Missing, until Found
  int opened_ = 0;       ///< counts Open and Close: an answer to an earlier question is nobody's
};

}  // namespace spectrino
