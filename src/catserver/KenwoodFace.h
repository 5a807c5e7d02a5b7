// The radio as a Kenwood TS-2000 on its serial line, for programs that know no rigctld.
// Knows the commands that such programs tune by; to all others it says "?;", as the radio does.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "catserver/CatFace.h"

namespace spectrino {

/// Commands are two letters, digits and ";". A read brings the same with its value, a set brings nothing; one
/// that fails brings "?;". What comes behind a set waits until the radio did it, so a read tells what it made
/// of it.
class KenwoodFace final : public CatFace {
 public:
  /// No command is as long; what is longer is skipped up to its end.
  static constexpr std::size_t kMostCommand = 64;
  static constexpr std::size_t kMostWaiting = 4 * 1024;

  /// radio outlives it.
  KenwoodFace(CatServerState& radio, Ways ways) : radio_(radio), ways_(std::move(ways)) {}

  /// Always true: a line has nobody to let go of.
  [[nodiscard]] bool Feed(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] bool Tick() override;
  [[nodiscard]] bool Busy() const override { return pending_.has_value() || autoInformation_ != 0; }
  /// The program is gone: the next one finds the line as it was made.
  void Reset();

 private:
  void GoOn();
  void Command(std::string_view command);
  [[nodiscard]] std::string Read(std::string_view name) const;
  [[nodiscard]] bool Set(std::string_view name, std::string_view value);
  [[nodiscard]] bool Ask(const CatWish& wish);
  [[nodiscard]] bool SetMode(std::string_view value);
  [[nodiscard]] std::string Information() const;
  void TellChanges();

  CatServerState& radio_;
  Ways ways_;
  std::string received_;
  bool skipping_ = false;  ///< a command that is too long
  std::optional<CatPending> pending_;
  int autoInformation_ = 0;
  std::string told_;  ///< the information that was told last
};

}  // namespace spectrino
