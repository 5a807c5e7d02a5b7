// The modes by their three names: the host's integers, RadioMode, and Hamlib's words.
#pragma once

#include <string_view>

namespace spectrino {

/// RadioMode of a host code; unknown for one that it has none for.
[[nodiscard]] int RadioModeOfHost(int hostMode);
/// The host code that RadioMode is asked for by; unknown for one that it has none for.
[[nodiscard]] int HostModeOfRadio(int radioMode);
/// The host code of what a mode button asks for; nothing but buttons 0..8 has one.
[[nodiscard]] int HostModeOfButton(int button, bool reverse);

/// The host code of Hamlib's word: "PKTUSB" is FSK. hostmode::kUnknown for a word that has none.
[[nodiscard]] int HostModeOfWord(std::string_view word);
/// Whether the word is one of the data modes: they share the codes of radio teletype.
[[nodiscard]] bool IsDataWord(std::string_view word);
/// The word that asks for a host code; empty where there is none.
[[nodiscard]] std::string_view WordOfHostMode(int hostMode, bool dataFamily);

}  // namespace spectrino
