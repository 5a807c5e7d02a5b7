// A radio that is tuned by writing to the section "PAN" of the program that controls it: Ketrel.
#pragma once

#include "host/PanFollower.h"

namespace spectrino {

class PanBackend final : public PanFollower {
 public:
  using PanFollower::PanFollower;

 private:
  [[nodiscard]] PanValues Read(CatControl control, bool fixedCentre) const override;
  void Send(Vfo vfo, double freqMHz) override;
  /// Writes the requested frequency for Ketrel: "TXFreq" with which 2, else "RXFreq". MHz.
  void SetKetrelFrequency(double freqMHz, int which);
};

}  // namespace spectrino
