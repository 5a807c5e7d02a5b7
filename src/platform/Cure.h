// What helps against what a message box tells: a sentence, and the button that does it.
// A value: who carries it out is the program's business.
#pragma once

#include <string>
#include <utility>

namespace spectrino {

enum class Remedy {
  None,        ///< a sentence alone
  OpenSetup,   ///< the setup dialog
  UseRate,     ///< RateHz as sample rate, and Start
  PlainZoom,   ///< High Res. Zoom off, and Start
  StartAgain,  ///< Start with what is set
  UseDemo,     ///< the demo band as source, and Start
  ShowFolder,  ///< the folder of the file Path in the desktop's file manager
};

struct Cure {
  Remedy Does = Remedy::None;
  std::string Text{};    ///< what to do, as a sentence; empty where the box itself says so
  std::string Button{};  ///< the caption; empty without a remedy
  int RateHz = 0;
  std::string Path{};

  bool operator==(const Cure&) const = default;

  [[nodiscard]] static Cure OpenSetup(std::string text) {
    return {.Does = Remedy::OpenSetup, .Text = std::move(text), .Button = "Open Setup"};
  }
  [[nodiscard]] static Cure UseRate(std::string text, int rateHz) {
    return {.Does = Remedy::UseRate,
            .Text = std::move(text),
            .Button = "Use " + std::to_string(rateHz) + " Hz",
            .RateHz = rateHz};
  }
  [[nodiscard]] static Cure PlainZoom(std::string text) {
    return {.Does = Remedy::PlainZoom, .Text = std::move(text), .Button = "Switch High Res. Zoom off"};
  }
  [[nodiscard]] static Cure StartAgain(std::string text) {
    return {.Does = Remedy::StartAgain, .Text = std::move(text), .Button = "Start again"};
  }
  [[nodiscard]] static Cure UseDemo(std::string text) {
    return {.Does = Remedy::UseDemo, .Text = std::move(text), .Button = "Use the demo band"};
  }
  [[nodiscard]] static Cure ShowFolder(std::string text, std::string path) {
    return {.Does = Remedy::ShowFolder,
            .Text = std::move(text),
            .Button = "Show the folder",
            .Path = std::move(path)};
  }
};

}  // namespace spectrino
