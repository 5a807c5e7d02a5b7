// Which reply does what: the tables behind ParseK4Replies, the radio's own rows and those of its panadapter.
#pragma once

#include <span>
#include <string_view>

#include "k4/CatReply.h"
#include "k4/K4PanelView.h"
#include "k4/K4State.h"

namespace spectrino {

struct CatRow {
  std::string_view Mnemonic;
  void (*Apply)(const CatReply& reply, K4State& state,
                K4PanelView& view);  ///< null: kept in the record alone
  const char*
      RecordField;  ///< keeps the whole reply under this name, before Apply; null: not kept, or by Apply
};

/// The rows that begin with "#", sorted: what the panadapter shows and how.
[[nodiscard]] std::span<const CatRow> CatPanRows();
/// Null when no row has exactly this mnemonic.
[[nodiscard]] const CatRow* FindCatRow(std::string_view mnemonic);

}  // namespace spectrino
