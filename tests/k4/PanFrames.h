// Frames of the panadapter stream as a K4 sends them, for tests.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace spectrino::test {

using Bytes = std::vector<std::uint8_t>;

struct FrameFields {
  char Letter = 'A';
  std::string Span = "100000";
  std::string Centre = "00014074000";
  std::string Reference = "-1350";
  /// Tenths of dB of sample 1..2048.
  std::function<int(int)> Level = [](int) { return -1200; };
};

inline Bytes PanFrame(const FrameFields& fields = {}) {
  Bytes frame{0xFF, 0xFE, 0x01, 0x00, 0x02, 0x00, static_cast<std::uint8_t>(fields.Letter)};
  for (const std::string& text : {fields.Span, fields.Centre, fields.Reference}) {
    frame.insert(frame.end(), text.begin(), text.end());
  }
  frame.resize(64);
  for (int sample = 1; sample <= 2048; ++sample) {
    const auto level = static_cast<std::uint16_t>(fields.Level(sample));
    frame.push_back(static_cast<std::uint8_t>(level >> 8));
    frame.push_back(static_cast<std::uint8_t>(level));
  }
  frame.resize(4162);
  return frame;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

}  // namespace spectrino::test
