// A radio behind another program, as the bridge needs it.
#pragma once

#include <QString>
#include <functional>

namespace spectrino {

struct FollowedRadio {
  qint64 VfoAHz = 0;
  qint64 VfoBHz = 0;
  QString Mode;  ///< as Hamlib names it: "USB", "CWR", "PKTUSB"
  int BandwidthHz = 0;
  bool Split = false;

  bool operator==(const FollowedRadio&) const = default;
};

class RadioFollower {
 public:
  virtual ~RadioFollower() = default;
  RadioFollower() = default;
  RadioFollower(const RadioFollower&) = delete;
  RadioFollower& operator=(const RadioFollower&) = delete;

  virtual void SetVfo(bool vfoB, qint64 hz) = 0;

  /// The radio as it is now, when something of it changed.
  std::function<void(const FollowedRadio&)> Told;

 protected:
  /// What was heard last.
  FollowedRadio radio_;
};

}  // namespace spectrino
