// A radio behind another program, as the bridge needs it.
#pragma once

#include <QString>
#include <functional>

namespace spectrino {

struct FollowedRadio {
  qint64 VfoAHz = 0;
  qint64 VfoBHz = 0;
  QString Mode;  ///< as Hamlib names it: "USB", "CWR", "PKTUSB"; empty before it was told
  int BandwidthHz = 0;
  bool Split = false;
  QString Trouble;  ///< why it is not heard and what to do; empty while it is: the rest is as it was before

  bool operator==(const FollowedRadio&) const = default;
};

class RadioFollower {
 public:
  virtual ~RadioFollower() = default;
  RadioFollower() = default;
  RadioFollower(const RadioFollower&) = delete;
  RadioFollower& operator=(const RadioFollower&) = delete;

  virtual void SetVfo(bool vfoB, qint64 hz) = 0;

  /// The radio as it is now, after each value that arrived and when it is no longer heard.
  std::function<void(const FollowedRadio&)> Told;

 protected:
  /// What was heard last.
  FollowedRadio radio_;
};

}  // namespace spectrino
