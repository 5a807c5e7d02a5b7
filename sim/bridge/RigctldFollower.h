// Follows and tunes the radio of a rigctld, by the program's own client.
#pragma once

#include <QTimer>

#include "adapters/qt/QtByteSocket.h"
#include "host/RigctldClient.h"
#include "platform/Clock.h"
#include "sim/bridge/RadioFollower.h"

namespace spectrino {

class RigctldFollower final : public RadioFollower {
 public:
  explicit RigctldFollower(const RigctldEndpoint& endpoint);

  void SetVfo(bool vfoB, qint64 hz) override;

 private:
  void Ask();
  void Take(Vfo vfo, const RigctldReply& reply);
  void LookAfterLink();

  QString name_;
  SystemClock clock_;
  QtByteSocket socket_;
  RigctldClient client_{socket_, clock_};
  QTimer tick_;
  bool askedB_ = false;
  LinkHealth::Time next_{};
};

}  // namespace spectrino
