// A WAV file, chunk by chunk, as a text of bytes. Sound or not is the test's business.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace spectrino::test {

inline std::string Number(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

inline std::string Chunk(const std::string& id, const std::string& body,
                         std::optional<std::uint32_t> size = {}) {
  const auto actual = static_cast<std::uint32_t>(body.size());
  return id + Number(size.value_or(actual), 4) + body + (body.size() % 2 != 0 ? std::string(1, '\0') : "");
}

inline std::string Format(std::uint32_t tag, std::uint32_t channels, std::uint32_t rate, std::uint32_t bits) {
  const std::uint32_t frame = channels * bits / 8;
  return Number(tag, 2) + Number(channels, 2) + Number(rate, 4) + Number(rate * frame, 4) + Number(frame, 2) +
         Number(bits, 2);
}

inline std::string Riff(const std::string& chunks) {
  return Chunk("RIFF", "WAVE" + chunks);
}

}  // namespace spectrino::test
