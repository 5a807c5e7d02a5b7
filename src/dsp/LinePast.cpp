#include "dsp/LinePast.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <new>
#include <utility>

namespace spectrino {
namespace {

using Duration = std::chrono::system_clock::duration;

constexpr std::size_t kBlockBytes = std::size_t{256} << 10;
// One less: the rest is for the tables.
constexpr int kMostBlocks = static_cast<int>(LinePast::kMostBytes / kBlockBytes) - 1;
// Joining may begin a block in every tier before it empties one.
constexpr int kReserve = 10;
constexpr int kJoined = 4;
constexpr std::chrono::seconds kLongestByAge{1};

double StepMHz(const PastLine& line, int columns) {
  return columns > 1 ? (line.LastMHz - line.FirstMHz) / (columns - 1) : 0;
}

/// At least half of each is in the other.
bool SamePlace(const PastLine& a, const PastLine& b) {
  const double common = std::min(a.LastMHz, b.LastMHz) - std::max(a.FirstMHz, b.FirstMHz);
  return 2 * common >= std::max(a.LastMHz - a.FirstMHz, b.LastMHz - b.FirstMHz);
}

}  // namespace

LinePast::Record& LinePast::Block::At(int index) const {
  return *std::launder(reinterpret_cast<Record*>(Memory.get() + static_cast<std::ptrdiff_t>(index) * Stride));
}

bool LinePast::Block::Takes(int columns) const {
  const auto needed = static_cast<int>(sizeof(Record)) + columns;
  return needed <= Stride &&
         static_cast<std::size_t>(End + 1) * static_cast<std::size_t>(Stride) <= kBlockBytes;
}

LinePast::LinePast() : columns_(kMostColumns), resampled_(kMostColumns) {
  for (Tier& tier : tiers_) tier.Blocks.reserve(kMostBlocks);
  free_.reserve(kMostBlocks);
}

void LinePast::Clear() {
  for (Tier& tier : tiers_) {
    for (Block& block : tier.Blocks) free_.push_back(std::move(block.Memory));
    tier.Blocks.clear();
    tier.Count = 0;
  }
}

std::size_t LinePast::Bytes() const {
  return static_cast<std::size_t>(taken_) * kBlockBytes +
         (tiers_.size() * sizeof(Block) + sizeof(free_[0])) * kMostBlocks + columns_.size() * sizeof(float) +
         resampled_.size() + sizeof *this;
}

int LinePast::Count() const {
  int count = 0;
  for (const Tier& tier : tiers_) count += tier.Count;
  return count;
}

const LinePast::Record* LinePast::RecordAt(int age) const {
  if (age < 0) return nullptr;
  for (const Tier& tier : tiers_) {
    if (age < tier.Count) return Oldest(tier, tier.Count - 1 - age);
    age -= tier.Count;
  }
  return nullptr;
}

std::optional<KeptLine> LinePast::At(int age) const {
  const Record* const record = RecordAt(age);
  if (record == nullptr) return std::nullopt;
  return KeptLine{record->Line, {record->Bytes(), static_cast<std::size_t>(record->Columns)}, record->Codes};
}

std::optional<int> LinePast::AgeOf(std::uint64_t number) const {
  // Numbers fall with the age: the oldest line that is not below it.
  int low = 0;
  int high = Count();
  while (low < high) {
    const int middle = (low + high) / 2;
    if (RecordAt(middle)->Line.Number >= number)
      low = middle + 1;
    else
      high = middle;
  }
  if (low == 0 || RecordAt(low - 1)->BegunNumber > number) return std::nullopt;
  return low - 1;
}

LinePast::Record* LinePast::Oldest(const Tier& tier, int index) const {
  if (index * 2 < tier.Count) {
    for (const Block& block : tier.Blocks) {
      if (index < block.End - block.Begin) return &block.At(block.Begin + index);
      index -= block.End - block.Begin;
    }
    return nullptr;
  }
  index = tier.Count - 1 - index;  // from the newest on
  for (auto block = tier.Blocks.rbegin(); block != tier.Blocks.rend(); ++block) {
    if (index < block->End - block->Begin) return &block->At(block->End - 1 - index);
    index -= block->End - block->Begin;
  }
  return nullptr;
}

/// With the oldest line of all; null while there is none.
LinePast::Tier* LinePast::LastFilled() {
  const auto last =
      std::ranges::find_if(tiers_.rbegin(), tiers_.rend(), [](const Tier& t) { return t.Count > 0; });
  return last == tiers_.rend() ? nullptr : &*last;
}

void LinePast::DropOldest(Tier& tier) {
  Block& block = tier.Blocks.front();
  --tier.Count;
  if (++block.Begin < block.End) return;
  free_.push_back(std::move(block.Memory));
  tier.Blocks.erase(tier.Blocks.begin());
}

LinePast::Record& LinePast::Append(Tier& tier, int columns) {
  if (tier.Blocks.empty() || !tier.Blocks.back().Takes(columns)) {
    if (free_.empty()) {
      assert(taken_ < kMostBlocks);
      free_.push_back(std::make_unique_for_overwrite<std::byte[]>(kBlockBytes));
      ++taken_;
    }
    // Lines of changing lengths must not take a block each.
    const int before = tier.Blocks.empty() ? 0 : tier.Blocks.back().Stride;
    const int needed = std::max(before, static_cast<int>(sizeof(Record)) + columns);
    constexpr int kAlign = alignof(Record);
    tier.Blocks.push_back({std::move(free_.back()), (needed + kAlign - 1) / kAlign * kAlign, 0, 0});
    free_.pop_back();
  }
  Block& block = tier.Blocks.back();
  ++tier.Count;
  return *new (block.Memory.get() + static_cast<std::ptrdiff_t>(block.End++) * block.Stride) Record;
}

std::span<const float> LinePast::Columns(std::span<const float> levels, PastLine& line) {
  const std::size_t each = (levels.size() + kMostColumns - 1) / kMostColumns;
  if (each <= 1) return levels;
  const std::size_t count = (levels.size() + each - 1) / each;
  const double pointMHz = StepMHz(line, static_cast<int>(levels.size()));
  line.FirstMHz += pointMHz * static_cast<double>(each - 1) / 2;
  line.LastMHz = line.FirstMHz + pointMHz * static_cast<double>(each * (count - 1));
  const std::size_t whole = levels.size() / each;
  for (std::size_t c = 0; c < whole; ++c) {
    const float* const from = levels.data() + c * each;
    float strongest = from[0];
    for (std::size_t i = 1; i < each; ++i) strongest = from[i] > strongest ? from[i] : strongest;
    columns_[c] = strongest;
  }
  if (whole < count)
    columns_[whole] = *std::max_element(levels.begin() + static_cast<long>(whole * each), levels.end());
  return std::span<const float>(columns_).first(count);
}

void LinePast::Store(Record& record, std::span<const float> levels, const PastLine& line) {
  record.Line = line;
  record.BegunUtc = line.TakenUtc;
  record.BegunNumber = line.Number;
  record.Codes = CodesFor(levels);
  record.Columns = static_cast<int>(levels.size());
  EncodeLevels(levels, record.Codes, {record.Bytes(), levels.size()});
}

void LinePast::Add(std::span<const float> levels, const PastLine& line) {
  MakeRoom();
  PastLine kept = line;
  kept.Number = ++numbers_;
  const std::span<const float> columns = Columns(levels, kept);
  Store(Append(tiers_.front(), static_cast<int>(columns.size())), columns, kept);
  Age();
}

void LinePast::Replace(std::span<const float> levels, const PastLine& line) {
  assert(tiers_.front().Count > 0);
  Tier& tier = tiers_.front();
  Record& newest = *Oldest(tier, tier.Count - 1);
  PastLine kept = line;
  kept.Number = newest.Line.Number;
  const auto begun = newest.BegunUtc;
  const std::span<const float> columns = Columns(levels, kept);
  assert(static_cast<int>(columns.size()) == newest.Columns);
  Store(newest, columns, kept);
  newest.BegunUtc = begun;
}

void LinePast::JoinInto(Record& target, const Record& source) {
  std::span<const std::uint8_t> bytes(source.Bytes(), static_cast<std::size_t>(source.Columns));
  const std::span<std::uint8_t> into(target.Bytes(), static_cast<std::size_t>(target.Columns));
  const bool sameGrid = source.Columns == target.Columns && source.Line.FirstMHz == target.Line.FirstMHz &&
                        source.Line.LastMHz == target.Line.LastMHz;
  if (!sameGrid) {
    const double sourceStep = StepMHz(source.Line, source.Columns);
    const double targetStep = StepMHz(target.Line, target.Columns);
    if (!(sourceStep > 0) || !(targetStep > 0)) return;
    const double step = targetStep / sourceStep;
    const double first = (target.Line.FirstMHz - source.Line.FirstMHz) / sourceStep - step / 2;
    const std::span<std::uint8_t> cells = std::span(resampled_).first(into.size());
    std::ranges::fill(cells, std::uint8_t{0});
    static_cast<void>(ResampleCodes(bytes, first, step, cells));
    bytes = cells;
  }
  JoinCodes(bytes, source.Codes, target.Codes, into);
}

/// The oldest lines of a tier become the newest of the next: as many as are joined, and stand in one place
/// and within that time.
void LinePast::MoveOn(std::size_t tier, Duration longest) {
  Tier& from = tiers_[tier];
  const Record& first = *Oldest(from, 0);
  int count = 1;
  while (count < std::min(kJoined, from.Count)) {
    const Record& next = *Oldest(from, count);
    if (!SamePlace(first.Line, next.Line) || next.Line.TakenUtc - first.BegunUtc > longest) break;
    ++count;
  }
  const Record& newest = *Oldest(from, count - 1);
  Record& joined = Append(tiers_[tier + 1], newest.Columns);
  joined.Line = newest.Line;
  joined.Columns = newest.Columns;
  joined.BegunUtc = first.BegunUtc;
  joined.BegunNumber = first.BegunNumber;
  joined.Codes = newest.Codes;
  float top = newest.Codes.Top();
  for (int i = 0; i < count; ++i) {
    const Record& source = *Oldest(from, i);
    joined.Codes.Quantum = std::max(joined.Codes.Quantum, source.Codes.Quantum);
    joined.Line.Dimmed = joined.Line.Dimmed || source.Line.Dimmed;
    top = std::max(top, source.Codes.Top());
  }
  if (joined.Codes.Quantum == 1) top = std::ceil(top);
  joined.Codes.Base = top - LevelCodes::kSteps * joined.Codes.Quantum;
  std::fill_n(joined.Bytes(), joined.Columns, std::uint8_t{0});
  for (int i = 0; i < count; ++i) JoinInto(joined, *Oldest(from, i));
  for (int i = 0; i < count; ++i) DropOldest(from);
}

void LinePast::MakeRoom() {
  for (;;) {
    const int room = static_cast<int>(free_.size()) + kMostBlocks - taken_;
    if (room >= kReserve) return;
    std::size_t largest = 0;
    for (std::size_t tier = 1; tier < tiers_.size(); ++tier)
      if (tiers_[tier].Blocks.size() > tiers_[largest].Blocks.size()) largest = tier;
    if (largest + 1 < tiers_.size() && room > kReserve / 2)
      MoveOn(largest, Duration::max());
    else
      DropOldest(*LastFilled());  // what cannot be joined has to go
  }
}

void LinePast::Age() {
  const auto now = At(0)->Line.TakenUtc;
  // One line came: one more moved on than it takes keeps up whatever the rate was before.
  for (int turn = 0; turn < 2; ++turn) {
    const Record* const fourth = tiers_[0].Count > kJoined ? Oldest(tiers_[0], kJoined - 1) : nullptr;
    if (fourth == nullptr || now - fourth->Line.TakenUtc <= kWhole) break;
    MoveOn(0, kLongestByAge);
  }
  for (int turn = 0; turn < 2; ++turn) {
    Tier& last = *LastFilled();
    if (now - Oldest(last, 0)->Line.TakenUtc <= kKept) break;
    DropOldest(last);
  }
}

}  // namespace spectrino
