// Which reply does what: the table behind ParseK4Replies.
#pragma once

#include <optional>
#include <string_view>

#include "k4/K4PanelView.h"
#include "k4/K4State.h"

namespace spectrino {

/// One reply without its ";".
class CatReply {
 public:
  explicit CatReply(std::string_view text) : Text(text) {}

  /// The sub receiver's.
  [[nodiscard]] bool Sub() const { return Text.size() > 2 && Text[2] == '$'; }
  /// Characters from a position counted from 1 on; fewer, or none, where the reply ends before.
  [[nodiscard]] std::string_view From(std::size_t position,
                                      std::size_t length = std::string_view::npos) const {
    return position <= Text.size() ? Text.substr(position - 1, length) : std::string_view{};
  }
  /// The number there; nothing when the reply ends before.
  [[nodiscard]] std::optional<double> Number(std::size_t position,
                                             std::size_t length = std::string_view::npos) const;
  /// The same, rounded to even and within 16 bits; nothing beyond them.
  [[nodiscard]] std::optional<int> Int16(std::size_t position,
                                         std::size_t length = std::string_view::npos) const;

  std::string_view Text;
};

struct CatRow {
  std::string_view Mnemonic;
  void (*Apply)(const CatReply& reply, K4State& state,
                K4PanelView& view);  ///< null: kept in the record alone
  const char*
      RecordField;  ///< keeps the whole reply under this name, before Apply; null: not kept, or by Apply
};

/// Null when no row has exactly this mnemonic.
[[nodiscard]] const CatRow* FindCatRow(std::string_view mnemonic);

}  // namespace spectrino
