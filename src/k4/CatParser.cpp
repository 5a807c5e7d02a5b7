#include "k4/CatParser.h"

#include <algorithm>
#include <string_view>

#include "k4/CatTable.h"
#include "state/BusyGuard.h"

namespace spectrino {
namespace {

/// Longest name first: "#NBL" before "#NB".
const CatRow* FindRow(std::string_view reply) {
  const std::size_t longest = reply.front() == '#' ? 5 : 2;
  const std::size_t shortest = reply.front() == '#' ? 3 : 2;
  for (std::size_t length = std::min(longest, reply.size()); length >= shortest; --length) {
    const CatRow* row = FindCatRow(reply.substr(0, length));
    if (row == nullptr) continue;
    // "#SPN$" tells of the sub panadapter; it is not the main one's with an odd value.
    const bool otherPan = reply.front() == '#' && length < reply.size() && reply[length] == '$';
    return otherPan ? nullptr : row;
  }
  return nullptr;
}

}  // namespace

void ParseK4Replies(std::string& buffer, K4State& state, K4PanelView& view) {
  const BusyGuard busy(state.K4ParserBusy);
  if (!busy) return;
  std::size_t taken = 0;
  while (taken < buffer.size()) {
    const std::size_t end = buffer.find(';', taken);
    if (end == std::string::npos) break;
    // A copy: a control that is moved may turn the event loop, and more text arrive in the buffer.
    const std::string reply = buffer.substr(taken, end - taken);
    taken = end + 1;
    state.K4UpdatingFromRadio = true;
    if (reply.size() <= 2) continue;
    if (const CatRow* row = FindRow(reply)) {
      if (row->RecordField != nullptr) state.Record.Store(row->RecordField, reply);
      if (row->Apply != nullptr) row->Apply(CatReply(reply), state, view);
    }
  }
  buffer.erase(0, std::min(taken, buffer.size()));
  state.K4UpdatingFromRadio = false;
}

}  // namespace spectrino
