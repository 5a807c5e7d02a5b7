// What the user is told: message boxes, the status text, the log.
#pragma once

#include <string_view>

#include "platform/Cure.h"

namespace spectrino {

enum class Severity { Information, Exclamation, Critical };
/// The areas of the log, by the names that QT_LOGGING_RULES knows: spectrino.audio and so on.
enum class LogArea { Audio, Dsp, K4, Civ, Host, Settings, Ui };

class Notifier {
 public:
  virtual ~Notifier() = default;
  /// A message box. Never opened inside a pass of the run cycle: implementations queue it behind the pass.
  /// On the offscreen platform and in timed runs it goes to standard error instead and blocks nothing.
  /// The cure stands below the text, with its button.
  virtual void ShowMessage(std::string_view title, std::string_view text, Severity severity,
                           const Cure& cure) = 0;
  void ShowMessage(std::string_view title, std::string_view text, Severity severity) {
    ShowMessage(title, text, severity, Cure{});
  }
  /// One line in the window's status area; empty clears it.
  virtual void ShowStatus(std::string_view text) = 0;
  virtual void Log(LogArea area, std::string_view text) = 0;
};

}  // namespace spectrino
