// A serial port and a panel that record what reaches them, and bytes written as operators write them.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "civ/HexText.h"
#include "civ/IcomPanelView.h"
#include "platform/SerialPort.h"

namespace spectrino::test {

/// "FE FE E0" or "FEFEE0" to bytes.
inline std::vector<std::uint8_t> Bytes(std::string text) {
  std::erase(text, ' ');
  return BytesFromHexText(text);
}

class FakeSerialPort final : public SerialPort {
 public:
  std::string Open(const std::string& path) override {
    Path = path;
    ++Opens;
    open_ = Trouble.empty();
    return Trouble;
  }
  void Close() override { open_ = false; }
  void CloseWhenSent() override { Close(); }
  [[nodiscard]] bool Closing() const override { return false; }
  [[nodiscard]] bool IsOpen() const override { return open_; }
  void Write(std::span<const std::uint8_t> bytes) override {
    std::string text;
    AppendHexText(text, bytes);
    Written.push_back(text);
  }
  void Pull(const std::string& reason) {
    open_ = false;
    Lost(reason);
  }
  /// What was written since the last call.
  std::vector<std::string> Take() { return std::exchange(Written, {}); }

  std::string Trouble;
  std::string Path;
  int Opens = 0;                     // tries
  std::vector<std::string> Written;  // hex text, a write each

 private:
  bool open_ = false;
};

class RecordingPanel final : public IcomPanelView {
 public:
  void SetAfSlider(int value) override { Told += "af " + std::to_string(value) + "; "; }
  void SetSquelchSlider(int value) override { Told += "squelch " + std::to_string(value) + "; "; }
  void SetRefLevelSlider(int value) override { Told += "ref " + std::to_string(value) + "; "; }
  void SelectSpan(int entry) override { Told += "span " + std::to_string(entry) + "; "; }
  void SetSpanLabel(const std::string& text) override { Told += text + "; "; }
  void ShowSpanList(bool list) override { Told += list ? "list; " : "label; "; }
  void SetFunction(int index, bool on) override {
    Told += "function " + std::to_string(index) + (on ? " on; " : " off; ");
  }
  void SetFixedMode(bool fixed) override { Told += fixed ? "fixed; " : "centre; "; }

  std::string Told;
};

}  // namespace spectrino::test
