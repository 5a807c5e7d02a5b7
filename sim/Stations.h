// Who is on the demo band: where each station is, how strong, and what it sends when.
// Amplitudes and tones as functions of time; DemoBand turns them into samples.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace spectrino {

/// The band repeats every so many Hz of absolute frequency, so that there is always something in view.
inline constexpr double kBandPatternHz = 200'000;

enum class StationKind { Morse, Voice, Digital, Carrier };

struct Station {
  StationKind Kind = StationKind::Morse;
  double OffsetHz = 0;   ///< carrier, or dial of a voice or digital station, within the pattern
  double Amplitude = 1;  ///< peak, in sample units
  double Start = 0;      ///< seconds that its programme is shifted by
  double DitSeconds = 0.06;
  std::vector<bool> Keying;  ///< Morse: key up or down for each dit of the message, repeated
  bool Lower = false;        ///< voice below its dial
  double PitchHz = 140;      ///< voice
  std::uint32_t Seed = 0;    ///< digital: its symbols
};

/// Key states, one for each dit: a dash is three, a gap in a letter one, between letters three, between words
/// seven. Characters without a Morse sign are passed over.
[[nodiscard]] std::vector<bool> MorseKeying(std::string_view text);

/// All stations of one pattern, the same for the same seed.
[[nodiscard]] std::vector<Station> MakeStations(std::uint32_t seed);

/// Morse: 0..1 with edges of 5 ms, raised cosines, so that keying does not click. seconds since the band
/// began.
[[nodiscard]] double MorseEnvelope(const Station& station, double seconds);
/// Voice: 0..1, syllables and pauses.
[[nodiscard]] double VoiceEnvelope(const Station& station, double seconds);
/// Digital: tone 0..7 of the symbol at this time, -1 between transmissions. Slots of 15 s, symbols of 0.16 s.
[[nodiscard]] int DigitalTone(const Station& station, double seconds);
/// A small mixing function for everything that only has to look random.
[[nodiscard]] std::uint32_t Scramble(std::uint32_t value);

}  // namespace spectrino
