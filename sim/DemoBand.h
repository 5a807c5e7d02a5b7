// The demo band as I/Q samples: noise, telegraphy, voices, digital stations, a carrier that fades, a birdie
// at 0 Hz. Everything is a function of time, so any block can be made without the ones before it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sim/Stations.h"

namespace spectrino {

class DemoBand {
 public:
  explicit DemoBand(std::uint32_t seed);

  /// Fills interleaved left, right samples from the given stereo frame on. Signals above centreMHz have L =
  /// cos, R = -sin, so that they are displayed right of the centre. Stations stand at absolute frequencies:
  /// moving the centre moves them. 0 shows the band around 0. The same arguments give the same samples.
  void Render(std::uint64_t firstFrame, int rateHz, double centreMHz, std::span<std::int16_t> block);

 private:
  void AddStation(const Station& station, double offsetHz);
  void AddTone(double hz, double amplitudeAtStart, double amplitudeAtEnd, std::size_t from,
               std::size_t count);
  void AddNoise();
  template <typename Envelope>
  void AddKeyed(double hz, double amplitude, Envelope envelope);
  void AddVoice(const Station& station, double dialHz);
  void AddDigital(const Station& station, double dialHz);

  std::uint32_t seed_;
  std::vector<Station> stations_;
  // Of the block under way.
  std::uint64_t firstFrame_ = 0;
  double rateHz_ = 0;
  std::size_t chunk_ = 1;  // samples between two looks at an envelope
  std::vector<float> inPhase_;
  std::vector<float> quadrature_;
};

}  // namespace spectrino
