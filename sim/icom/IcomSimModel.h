// The transceivers that can be simulated: address, reception, scope geometry.
// Not what they do with a command: see IcomSimControl.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace spectrino {

enum class IcomSimKind : std::uint8_t { Ic7300, Ic705, Ic9700, Ic7610 };

struct SimHzRange {
  std::int64_t LowHz = 0;
  std::int64_t HighHz = 0;  ///< included
  [[nodiscard]] constexpr bool Holds(std::int64_t hz) const { return hz >= LowHz && hz <= HighHz; }
};

struct IcomSimModel {
  IcomSimKind Kind;
  std::string_view Option;  ///< as the command line names it
  std::uint8_t Address;     ///< CI-V address as delivered; also what 19 00 tells
  int ScopePoints;
  int ScopeFullScale;  ///< amplitude byte at the top of the scope
  int ScopeDivisions;  ///< frames of one scope line
  std::uint8_t AttenuatorDb;
  int Receivers;  ///< 2: has a main and a sub band
  std::int64_t StartHz;
  std::array<SimHzRange, 3> Coverage;  ///< unused rows hold nothing

  [[nodiscard]] constexpr bool Receives(std::int64_t hz) const {
    for (const SimHzRange& range : Coverage) {
      if (range.HighHz != 0 && range.Holds(hz)) return true;
    }
    return false;
  }
};

[[nodiscard]] const IcomSimModel& IcomSimModelOf(IcomSimKind kind);
[[nodiscard]] std::span<const IcomSimModel> IcomSimModels();

/// A range of the fixed-mode scope: the edges are stored per range.
struct SimScopeRange {
  int Number = 0;  ///< 1 and up, as 27 1E counts
  SimHzRange Hz;
};
inline constexpr int kScopeEdgeSets = 4;
/// The range that holds a frequency; the last one for frequencies above all of them.
[[nodiscard]] SimScopeRange SimScopeRangeAt(std::int64_t hz);
/// Number of ranges; 27 1E refuses others.
[[nodiscard]] int SimScopeRangeCount();
/// Edge set 1..4 of a range 1..count as delivered.
[[nodiscard]] SimHzRange SimDefaultEdges(int range, int set);

}  // namespace spectrino
