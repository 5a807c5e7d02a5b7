#include "sim/icom/IcomSimBytes.h"

#include <algorithm>

namespace spectrino {

namespace {

constexpr std::size_t kShortestFrame = 3;
constexpr std::size_t kLongestFrame = 200;

template <typename Iterator>
std::optional<std::uint64_t> ReadBcd(Iterator high, Iterator end) {
  std::uint64_t value = 0;
  for (; high != end; ++high) {
    const unsigned tens = *high >> 4U;
    const unsigned ones = *high & 0x0FU;
    if (tens > 9 || ones > 9) return std::nullopt;
    value = value * 100 + tens * 10 + ones;
  }
  return value;
}

}  // namespace

void PutBcdLow(SimBytes& out, std::uint64_t value, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i, value /= 100) {
    out.push_back(static_cast<std::uint8_t>((value / 10 % 10) << 4U | value % 10));
  }
}

void PutBcdHigh(SimBytes& out, std::uint64_t value, std::size_t bytes) {
  PutBcdLow(out, value, bytes);
  std::reverse(out.end() - static_cast<std::ptrdiff_t>(bytes), out.end());
}

std::optional<std::uint64_t> BcdLow(SimByteView bytes) {
  return ReadBcd(bytes.rbegin(), bytes.rend());
}

std::optional<std::uint64_t> BcdHigh(SimByteView bytes) {
  return ReadBcd(bytes.begin(), bytes.end());
}

bool IcomSimSplitter::Complete(std::uint8_t byte) {
  if (byte == kCivPreamble) {
    if (++preambles_ >= 2) {
      frame_.clear();
      inside_ = true;
    }
    return false;
  }
  preambles_ = 0;
  if (!inside_) {
    frame_.clear();
    return false;
  }
  if (byte != kCivEnd) {
    if (frame_.size() < kLongestFrame) frame_.push_back(byte);
    return false;
  }
  inside_ = false;
  return frame_.size() >= kShortestFrame && frame_.size() < kLongestFrame;
}

}  // namespace spectrino
