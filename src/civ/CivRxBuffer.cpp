#include "civ/CivRxBuffer.h"

#include <algorithm>

#include "civ/HexText.h"

namespace spectrino {

void CivRxBuffer::Append(std::span<const std::uint8_t> bytes) {
  // Consumed text goes once a read, not once a frame.
  text_.erase(0, start_);
  searched_ -= start_;
  start_ = 0;
  AppendHexText(text_, bytes);
}

bool CivRxBuffer::NextFrame(std::string_view radioAddress, std::string& frame) {
  while (start_ < text_.size()) {
    // A search in the text: it may match across a byte boundary (0F D0). What is left is then half a byte
    // off, and the next preamble is found all the same.
    const std::size_t end = text_.find("FD", searched_);
    if (end == std::string::npos) {
      searched_ = std::max(start_, text_.size() - 1);  // a single F at the end may become FD
      return false;
    }
    const std::string_view upToEnd = std::string_view(text_).substr(start_, end + 2 - start_);
    const std::size_t preamble = upToEnd.find("FEFE");
    const std::string_view found = upToEnd.substr(std::min(preamble, upToEnd.size()));
    const bool accepted = found.size() >= 10 && found.substr(6, 2) == radioAddress;
    if (accepted) frame = found;
    start_ = searched_ = end + 2;
    if (std::string_view(text_).substr(start_) == "00") Clear();
    if (accepted) return true;
  }
  return false;
}

bool CivRxBuffer::DropOverlong() {
  if (text_.size() - start_ <= kMaxText) return false;
  Clear();
  return true;
}

void CivRxBuffer::Clear() {
  text_.clear();
  start_ = searched_ = 0;
}

}  // namespace spectrino
