// The commands for what the scope shows; those that are a plain number are in IcomSimSettings.

#include <cstdlib>

#include "sim/icom/IcomSimTables.h"

namespace spectrino {

SimHzRange IcomSimControl::FixedEdges() const {
  return EdgesOf(SimScopeRangeAt(state_.Active().Hz).Number, Setting({0x27, 0x16, 0x00}));
}

SimHzRange IcomSimControl::EdgesOf(int range, int set) const {
  const auto changed = state_.EdgeSets.find({range, set});
  return changed == state_.EdgeSets.end() ? SimDefaultEdges(range, set) : changed->second;
}

/// 27 15 00 | half span (5 BCD)
IcomSimControl::Answer IcomSimControl::ScopeSpan(SimByteView data) {
  if (data.empty()) {
    Answer answer{true};
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
IcomSimControl::Answer IcomSimControl::ScopeReference(SimByteView data) {
  if (data.empty()) {
    Answer answer{true};
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
IcomSimControl::Answer IcomSimControl::ScopeEdges(SimByteView data) {
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
  Answer answer{true, {data[0], data[1]}};
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.LowHz));
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.HighHz));
  return answer;
}

}  // namespace spectrino
