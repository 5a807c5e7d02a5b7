// The question after a connection that did not come about: other settings, or give up?
// What the dialog shows and what OK stores; the dialog itself is a window elsewhere.
#pragma once

#include <optional>
#include <string>

#include "settings/SettingsStore.h"

namespace spectrino {

/// The dialog's text boxes, top to bottom.
struct K4ConnectTexts {
  std::string Host;
  std::string CatPort;
  std::string PanPort;
  std::string TimeOut;  ///< milliseconds

  bool operator==(const K4ConnectTexts&) const = default;
};

class K4RetryDialog {
 public:
  virtual ~K4RetryDialog() = default;
  /// frmTCPConnect, modal. The texts as the user left them for OK, nothing for Cancel; Cancel too when the
  /// program is ended meanwhile.
  [[nodiscard]] virtual std::optional<K4ConnectTexts> Ask(const std::string& message,
                                                          const K4ConnectTexts& shown) = 0;
};

/// What the text boxes show first: the stored settings, ports as the numbers they are taken for.
[[nodiscard]] K4ConnectTexts LoadK4ConnectTexts(SettingsStore& store);
/// Two lines for lblConnect.
[[nodiscard]] std::string K4RetryMessage(const K4ConnectTexts& texts);
/// OK: address and ports as typed, without outer blanks; the time-out as a number within 250..3000.
void SaveK4ConnectTexts(SettingsStore& store, const K4ConnectTexts& texts);

}  // namespace spectrino
