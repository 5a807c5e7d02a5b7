// A client of rigctld's protocol: requests in, whole answers out, in order.
// What an answer says is CatAnswers'; this waits for the radio and bounds what a client may leave here.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "catserver/CatAnswers.h"
#include "catserver/CatFace.h"

namespace spectrino {

class RigctldFace final : public CatFace {
 public:
  /// No request is as long: whoever sends more without an end of line is none of its clients.
  static constexpr std::size_t kMostLine = 1024;
  /// What may wait behind a wish that the radio has not told of yet.
  static constexpr std::size_t kMostWaiting = 16 * 1024;

  /// radio outlives it.
  RigctldFace(CatServerState& radio, Ways ways) : radio_(radio), ways_(std::move(ways)) {}

  [[nodiscard]] bool Feed(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] bool Tick() override;
  [[nodiscard]] bool Busy() const override { return pending_.has_value(); }

 private:
  struct Pending {
    CatPending Wish;
    std::string Head;  ///< of the answer, ahead of the result
  };

  [[nodiscard]] bool GoOn();
  void TakeLine();
  void Answer(const CatRequest& request);

  CatServerState& radio_;
  Ways ways_;
  CatSession session_;
  std::string received_;  ///< not looked at yet
  std::string line_;      ///< what is left of the line that is being answered
  std::optional<Pending> pending_;
  bool left_ = false;  ///< said good-bye
};

}  // namespace spectrino
