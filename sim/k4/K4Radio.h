// The inside of a simulated K4: what it knows, and what it answers to CAT commands.
// Text in, text out; no sockets and no clock of its own.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "sim/k4/RadioBand.h"

namespace spectrino {

class K4Radio {
 public:
  explicit K4Radio(bool isK4D);

  /// One command without its ";". What the asking client is answered (empty: nothing; several replies each
  /// with ";"). A change is told to Changed as well.
  [[nodiscard]] std::string Answer(std::string_view command, double seconds);
  /// A reply that says what became different, with its ";": sent to the clients that asked for reports.
  std::function<void(const std::string& reply)> Changed;

  /// Turns the VFO as a hand at the front panel would.
  void TurnVfoA(int stepHz);
  void SetTransmitting(bool on) { Set("TQ", on ? "1" : "0"); }
  [[nodiscard]] std::string Value(std::string_view key) const;
  [[nodiscard]] int Number(std::string_view key) const;
  [[nodiscard]] double HertzOf(std::string_view key) const;

  /// One frame of 4162 bytes of a display, 'A', 'Y' or 'Z'.
  [[nodiscard]] std::string Frame(char display, double seconds) const;

 private:
  void Set(std::string_view key, std::string value);
  [[nodiscard]] std::string Reply(std::string_view key) const;
  [[nodiscard]] std::string AnswerFixed(std::string_view command, double seconds) const;
  [[nodiscard]] std::string InformationReply() const;
  [[nodiscard]] std::string Meter(bool sub, double seconds) const;
  bool Act(std::string_view command);
  void FitFilter(bool sub);
  void SelectBand(std::string_view digits);

  std::map<std::string, std::string, std::less<>> values_;
  RadioBand band_;
};

}  // namespace spectrino
