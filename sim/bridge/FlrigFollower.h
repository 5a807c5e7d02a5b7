// Follows and tunes the radio of an flrig over its XML-RPC port.
//
//   POST /RPC2    <methodCall><methodName>rig.get_vfoA</methodName><params/></methodCall>
//   answer        <methodResponse><params><param><value>14074000</value></param></params></methodResponse>
//
// Methods as flrig's own list of them names them: rig.get_vfoA, rig.get_vfoB (Hz as text), rig.get_mode
// (text), rig.get_bw (two texts), rig.get_split (int), rig.set_vfoA and rig.set_vfoB (double, Hz).
#pragma once

#include <QNetworkAccessManager>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <optional>

#include "sim/bridge/RadioFollower.h"

class QNetworkReply;

namespace spectrino {

class FlrigFollower final : public RadioFollower {
 public:
  FlrigFollower(const QString& host, quint16 port);

  void SetVfo(bool vfoB, qint64 hz) override;

 private:
  struct Answer {
    bool Reached = false;          ///< something answered
    std::optional<QString> Value;  ///< nothing: it was no answer to the question
  };

  void Ask();
  void TakeVfoA(const Answer& answer);
  void Call(const QString& method, const QString& params, std::function<void(const Answer&)> answered);
  /// As Call, for a value that is told on as soon as it is there; one that does not come stays as it was.
  void AskFor(const QString& method, std::function<void(const QString&)> take);

  QNetworkAccessManager network_;
  QUrl url_;
  QTimer poll_;
  int waiting_ = 0;
};

/// The texts of the values in an XML-RPC answer, in order; none when it is no such answer or a fault.
[[nodiscard]] QStringList XmlRpcValues(const QByteArray& answer);

}  // namespace spectrino
