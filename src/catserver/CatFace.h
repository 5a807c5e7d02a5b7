// One program's side of a protocol: its bytes in, answers out, and the wish that it waits for.
// Holds no connection. What it cannot take ends the connection, never the program.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "catserver/CatServerState.h"

namespace spectrino {

class CatFace {
 public:
  /// Neither may destroy the face.
  struct Ways {
    std::function<void(std::string_view bytes)> Send;
    /// A wish was handed to the radio, or refused.
    std::function<void(const CatWish& wish, CatResult result)> Told;
  };

  virtual ~CatFace() = default;
  CatFace() = default;
  CatFace(const CatFace&) = delete;
  CatFace& operator=(const CatFace&) = delete;

  /// In whatever pieces. False: this is no such program, or it has said good-bye; let go of it.
  [[nodiscard]] virtual bool Feed(std::span<const std::uint8_t> bytes) = 0;
  /// To be called every few milliseconds while Busy: answers a wish that the radio told of, and goes on with
  /// what came behind it. Returned as by Feed.
  [[nodiscard]] virtual bool Tick() = 0;
  /// There is something to look at though nothing arrives.
  [[nodiscard]] virtual bool Busy() const = 0;
};

}  // namespace spectrino
