// Which part of a band is meant for what: segments with their modes, by IARU region or by the operator.
// A custom among amateurs, read from a file; says nothing of where one may transmit.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace spectrino {

enum class BandUse : std::uint8_t { Cw, Digital, Phone, All, Beacons, Satellite, Fm };

/// "CW", "Digital", "Phone", "All", "Beacons", "Satellite", "FM": in the file and on the plot.
[[nodiscard]] std::string_view BandUseText(BandUse use);

struct BandSegment {
  double LowMHz = 0;  ///< belongs to it, HighMHz to the next one
  double HighMHz = 0;
  BandUse Use = BandUse::All;

  bool operator==(const BandSegment&) const = default;
};

struct PlannedBand {
  std::string Name;  ///< "20 m"
  double LowMHz = 0;
  double HighMHz = 0;
  std::vector<BandSegment> Segments;  ///< ascending, apart, within the band

  bool operator==(const PlannedBand&) const = default;
};

class BandPlan {
 public:
  BandPlan() = default;
  /// bands: ascending and apart, their segments too.
  explicit BandPlan(std::vector<PlannedBand> bands) : bands_(std::move(bands)) {}

  [[nodiscard]] bool Empty() const { return bands_.empty(); }
  [[nodiscard]] std::span<const PlannedBand> Bands() const { return bands_; }
  /// "20 m CW"; "20 m" where the plan names no use; "out of band" elsewhere; empty when there is no plan.
  [[nodiscard]] std::string NameAt(double mhz) const;

  bool operator==(const BandPlan&) const = default;

 private:
  std::vector<PlannedBand> bands_;
};

struct ReadBandPlan {
  BandPlan Plan;
  /// One sentence of what was skipped, and how often; empty: nothing was.
  std::string Trouble;
};

/// The text of a band plan:
///
///   {"source": ..., "date": ..., "caution": ...,
///    "bands": [{"name": "20 m", "low": 14000, "high": 14350,
///               "segments": [{"low": 14000, "high": 14070, "use": "CW"}, ...]}, ...]}
///
/// low, high: kHz, numbers. Bands and segments that make no sense are skipped, a segment is cut at its
/// band's edges; of two that overlap the one that begins first keeps its part, of two that begin together
/// the shorter one. At most 1 MiB, 64 bands, 64 segments a band, 16 characters a name.
[[nodiscard]] ReadBandPlan ParseBandPlan(std::string_view text);

}  // namespace spectrino
