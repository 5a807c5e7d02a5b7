// What most replies do: store a field, and tell the panel where a check box shows it.
// Not for users of the tables: the files with rows alone include this.
#pragma once

#include "k4/CatTable.h"

namespace spectrino::cat {

inline constexpr std::size_t kToEnd = std::string_view::npos;

using IntField = int K4State::*;
using MHzField = double K4State::*;

template <IntField Field, std::size_t Position, std::size_t Length = 1, CatRange Range = kDigitRange>
void StoreInt(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto value = reply.Int(Position, Length, Range)) state.*Field = *value;
}

/// Main at the position, sub one further on.
template <IntField Main, IntField Sub, std::size_t Position, std::size_t Length = 1,
          CatRange Range = kDigitRange, int Factor = 1>
void StorePair(const CatReply& reply, K4State& state, K4PanelView&) {
  const bool sub = reply.Sub();
  const auto value = reply.Int(sub ? Position + 1 : Position, Length, Range);
  if (value) state.*(sub ? Sub : Main) = *value * Factor;
}

template <IntField Field, std::size_t Position, std::size_t Length = kToEnd, CatRange Range = kDigitRange>
void StoreMainInt(const CatReply& reply, K4State& state, K4PanelView& view) {
  if (!reply.Sub()) StoreInt<Field, Position, Length, Range>(reply, state, view);
}

template <MHzField Field, std::size_t Position, std::size_t Length = kToEnd, CatRange Range = kHertzRange>
void StoreMHz(const CatReply& reply, K4State& state, K4PanelView&) {
  if (const auto hz = reply.Number(Position, Length, Range)) state.*Field = *hz / 1e6;
}

inline void Follow(K4PanelView& view, K4Check check, int before, int now) {
  if (before != now) view.SetCheck(check, check == K4Check::Splt ? now != 0 : now == 1);
}

template <IntField Field, K4Check Check, std::size_t Position, std::size_t Length = 1>
void StoreChecked(const CatReply& reply, K4State& state, K4PanelView& view) {
  const int before = state.*Field;
  StoreInt<Field, Position, Length, kDigitRange>(reply, state, view);
  Follow(view, Check, before, state.*Field);
}

}  // namespace spectrino::cat
