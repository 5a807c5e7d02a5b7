// A link to an Icom that writes down what is sent.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "civ/CivSender.h"

namespace spectrino::test {

class RecordingCivSender final : public CivSender {
 public:
  void SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) override {
    Note(std::string(command) + std::string(subCommand) + std::string(data));
  }
  void SendFrequency(std::string_view bcd) override { Note("05" + std::string(bcd)); }
  void ReceiveCiv() override {
    Note("receive");
    if (Received) Received();
  }
  void RequestIcomStatus() override { Note("status"); }

  /// "160201 | status": what was called since the last Take, in order.
  [[nodiscard]] std::string Take() { return std::exchange(sent_, {}); }

  std::function<void()> Received;

 private:
  void Note(const std::string& text) { sent_ += sent_.empty() ? text : " | " + text; }

  std::string sent_;
};

}  // namespace spectrino::test
