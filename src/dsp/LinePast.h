// The waterfall's lines of the last half hour: whole, as bytes, with what is needed to draw them again.
// Keeps them and thins them out; knows no pixels and no colours.
//
// Lines lie in tiers, the newest in the first. What is older than 5 minutes moves on, up to four joined to
// one by their maximum, so that a signal of a single line stays; a joined one stands for no more than a
// second then. Whenever memory runs out the tier that takes the most of it is joined on, whatever its age.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "dsp/LevelCodes.h"

namespace spectrino {

/// What is known of a line beside its levels.
struct PastLine {
  double FirstMHz = 0;     ///< of its first level, at that one's middle
  double LastMHz = 0;      ///< of its last
  double ViewLeftMHz = 0;  ///< what was in view when it was taken
  double ViewRightMHz = 0;
  std::chrono::system_clock::time_point TakenUtc{};  ///< of joined lines, of the newest
  float BottomLevel = 0;
  float TopLevel = 0;
  float UnitsPerDb = 1;  ///< of its levels
  bool Dimmed = false;
  std::uint64_t Number =
      0;  ///< counts up by one a line, from 1; given by LinePast, of joined ones the newest's
};

/// A line that is kept; holds until the next change of the past.
struct KeptLine {
  const PastLine& Line;
  std::span<const std::uint8_t> Bytes;
  LevelCodes Codes;
};

class LinePast {
 public:
  static constexpr int kMostColumns = 4096;
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;
  static constexpr std::chrono::minutes kKept{30};
  static constexpr std::chrono::minutes kWhole{5};

  LinePast();

  /// Forgets all; the memory is kept for the next lines.
  void Clear();
  /// levels: any number; those above kMostColumns are joined by maximum. Allocates nothing but, until the
  /// budget is reached, a block each so many lines.
  void Add(std::span<const float> levels, const PastLine& line);
  /// In place of the newest line, which keeps its number. Only after an Add.
  void Replace(std::span<const float> levels, const PastLine& line);

  [[nodiscard]] int Count() const;
  /// 0 is the newest; nothing from Count() on.
  [[nodiscard]] std::optional<KeptLine> At(int age) const;
  /// Where a line is now, or the one that it was joined to; nothing when it is gone.
  [[nodiscard]] std::optional<int> AgeOf(std::uint64_t number) const;
  /// Memory taken.
  [[nodiscard]] std::size_t Bytes() const;

 private:
  struct Record {
    PastLine Line;
    std::chrono::system_clock::time_point BegunUtc{};  ///< of the oldest joined
    std::uint64_t BegunNumber = 0;                     ///< of the same
    LevelCodes Codes;
    int Columns = 0;
    [[nodiscard]] std::uint8_t* Bytes() { return reinterpret_cast<std::uint8_t*>(this + 1); }
    [[nodiscard]] const std::uint8_t* Bytes() const {
      return reinterpret_cast<const std::uint8_t*>(this + 1);
    }
  };
  struct Block {
    std::unique_ptr<std::byte[]> Memory;
    int Stride = 0;  ///< bytes from record to record
    int Begin = 0;   ///< oldest record
    int End = 0;
    [[nodiscard]] Record& At(int index) const;
    [[nodiscard]] bool Takes(int columns) const;
  };
  struct Tier {
    std::vector<Block> Blocks;  ///< the oldest first
    int Count = 0;
  };

  Record& Append(Tier& tier, int columns);
  void Store(Record& record, std::span<const float> levels, const PastLine& line);
  std::span<const float> Columns(std::span<const float> levels, PastLine& line);
  [[nodiscard]] Tier* LastFilled();
  void DropOldest(Tier& tier);
  [[nodiscard]] Record* Oldest(const Tier& tier, int index) const;
  [[nodiscard]] const Record* RecordAt(int age) const;
  void MoveOn(std::size_t tier, std::chrono::system_clock::duration longest);
  void JoinInto(Record& target, const Record& source);
  void MakeRoom();
  void Age();

  std::array<Tier, 8> tiers_;
  std::vector<std::unique_ptr<std::byte[]>> free_;
  int taken_ = 0;              ///< blocks, used or free
  std::uint64_t numbers_ = 0;  ///< lines so far
  std::vector<float> columns_;
  std::vector<std::uint8_t> resampled_;
};

}  // namespace spectrino
