#include "sim/icom/IcomSimScopeControl.h"

#include <cstdlib>

namespace spectrino {

std::optional<SimAnswer> IcomSimScopeControl::Execute(SimByteView command) {
  using C = IcomSimScopeControl;
  static constexpr auto kRows = std::to_array<SimCommandRow<C>>({
      {{0x27, 0x15, 0x00}, &C::ScopeSpan},
      {{0x27, 0x19, 0x00}, &C::ScopeReference},
      {{0x27, 0x1E}, &C::ScopeEdges},
  });
  return RunSimCommand<C>(kRows, *this, command);
}

SimHzRange IcomSimScopeControl::FixedEdges() const {
  return EdgesOf(SimScopeRangeAt(state_.Active().Hz).Number, settings_.Value({0x27, 0x16, 0x00}));
}

SimHzRange IcomSimScopeControl::EdgesOf(int range, int set) const {
  const auto changed = state_.EdgeSets.find({range, set});
  return changed == state_.EdgeSets.end() ? SimDefaultEdges(range, set) : changed->second;
}

/// 27 15 00 | half span (5 BCD)
SimAnswer IcomSimScopeControl::ScopeSpan(SimByteView data) {
  if (data.empty()) {
    SimAnswer answer{true};
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(state_.HalfSpanHz));
    return answer;
  }
  // Wider ones belong to receivers that are not simulated.
  constexpr auto kHalfSpansHz =
      std::to_array<std::int64_t>({2'500, 5'000, 10'000, 25'000, 50'000, 100'000, 250'000, 500'000});
  const auto hz = static_cast<std::int64_t>(BcdLow(data).value_or(0));
  if (data.size() != kBcdHzBytes || std::ranges::find(kHalfSpansHz, hz) == kHalfSpansHz.end()) return {};
  state_.HalfSpanHz = hz;
  return {true};
}

/// 27 19 00 | dB, two decimals (2 BCD, high byte first) | 00 plus, 01 minus: -10.5 dB is 10 50 01
SimAnswer IcomSimScopeControl::ScopeReference(SimByteView data) {
  if (data.empty()) {
    SimAnswer answer{true};
    PutBcdHigh(answer.Data, static_cast<std::uint64_t>(std::abs(state_.RefHalfDb) * 50), 2);
    answer.Data.push_back(state_.RefHalfDb < 0 ? 1 : 0);
    return answer;
  }
  if (data.size() != 3 || data[2] > 1) return {};
  const auto hundredths = BcdHigh(data.first(2));
  if (!hundredths || *hundredths > 2000 || *hundredths % 50 != 0) return {};
  const int halfDb = static_cast<int>(*hundredths / 50);
  state_.RefHalfDb = data[2] == 1 ? -halfDb : halfDb;
  return {true};
}

/// 27 1E | range | edge set | low edge (5 BCD) | high edge (5 BCD)
SimAnswer IcomSimScopeControl::ScopeEdges(SimByteView data) {
  if (data.size() != 2 && data.size() != 2 + 2 * kBcdHzBytes) return {};
  const int range = static_cast<int>(BcdHigh(data.first(1)).value_or(0));
  const int set = static_cast<int>(BcdHigh(data.subspan(1, 1)).value_or(0));
  if (range < 1 || range > SimScopeRangeCount() || set < 1 || set > kScopeEdgeSets) return {};
  if (data.size() > 2) {
    const auto low = BcdLow(data.subspan(2, kBcdHzBytes));
    const auto high = BcdLow(data.subspan(2 + kBcdHzBytes));
    if (!low || !high || *low + 5'000 > *high || *low + 1'000'000 < *high) return {};
    state_.EdgeSets[{range, set}] = {static_cast<std::int64_t>(*low), static_cast<std::int64_t>(*high)};
    return {true};
  }
  const SimHzRange edges = EdgesOf(range, set);
  SimAnswer answer{true, {data[0], data[1]}};
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.LowHz));
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.HighHz));
  return answer;
}

}  // namespace spectrino
