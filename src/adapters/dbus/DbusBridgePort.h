// BridgePort on the session's message bus:
//
//   service org.spectrino.Bridge, object /org/spectrino/Bridge, interface org.spectrino.Bridge1
//     properties  VfoAHz VfoBHz Offset Shift Bandwidth Bandwidth2   (s, read), told by PropertiesChanged
//     method      Command(s text)
//
// Starts no service: who is not running is missing.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>
#include <memory>

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
  void Ask();
  void TakeAnswer(const QDBusPendingCallWatcher& call);
  void Leave(const std::string& why);
  void Take(const QVariantMap& items);

  QDBusConnection bus_;
  std::unique_ptr<QDBusServiceWatcher> service_;
  bool found_ = false;
  int opened_ = 0;  ///< counts Open and Close: an answer to an earlier question is nobody's
};

}  // namespace spectrino
