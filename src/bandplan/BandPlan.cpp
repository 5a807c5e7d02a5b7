#include "bandplan/BandPlan.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace spectrino {
namespace {

using nlohmann::json;

constexpr std::size_t kMostBytes = 1 << 20;
constexpr std::size_t kMostBands = 64;
constexpr std::size_t kMostSegments = 64;
constexpr std::size_t kMostName = 16;
constexpr double kMostKHz = 1e9;

constexpr std::array<std::string_view, 7> kUses{"CW",      "Digital",   "Phone", "All",
                                                "Beacons", "Satellite", "FM"};

/// Counts what had to be skipped and remembers the first of it.
class Skipped {
 public:
  void Note(std::string what) {
    if (count_++ == 0) first_ = std::move(what);
  }
  [[nodiscard]] std::string Text() const {
    if (count_ == 0) return {};
    return first_ + (count_ > 1 ? ", and " + std::to_string(count_ - 1) + " more" : "");
  }

 private:
  int count_ = 0;
  std::string first_;
};

struct Edges {
  double LowMHz = 0;
  double HighMHz = 0;
};

std::optional<double> MHzOf(const json& object, const char* key) {
  const auto at = object.find(key);
  if (at == object.end() || !at->is_number()) return std::nullopt;
  const double khz = at->get<double>();
  return khz >= 0 && khz <= kMostKHz ? std::optional(khz / 1000) : std::nullopt;
}

std::optional<Edges> EdgesOf(const json& object) {
  if (!object.is_object()) return std::nullopt;
  const auto low = MHzOf(object, "low");
  const auto high = MHzOf(object, "high");
  if (!low || !high || !(*high > *low)) return std::nullopt;
  return Edges{*low, *high};
}

std::optional<BandUse> UseOf(const json& object) {
  const auto at = object.find("use");
  const std::string* text = at == object.end() ? nullptr : at->get_ptr<const std::string*>();
  if (text == nullptr) return std::nullopt;
  const auto found = std::ranges::find(kUses, *text);
  if (found == kUses.end()) return std::nullopt;
  return static_cast<BandUse>(found - kUses.begin());
}

/// What begins first stands; the next one loses what is taken already.
template <typename Span>
std::vector<Span> Apart(std::vector<Span> spans, Skipped& skipped, const char* what) {
  std::ranges::sort(spans, [](const Span& a, const Span& b) {
    return std::pair(a.LowMHz, a.HighMHz) < std::pair(b.LowMHz, b.HighMHz);
  });
  std::vector<Span> apart;
  for (Span& span : spans) {
    if (!apart.empty() && span.LowMHz < apart.back().HighMHz) {
      skipped.Note(std::string(what) + " that overlap");
      span.LowMHz = apart.back().HighMHz;
    }
    if (span.HighMHz > span.LowMHz) apart.push_back(std::move(span));
  }
  return apart;
}

std::vector<BandSegment> SegmentsOf(const json& object, const PlannedBand& band, Skipped& skipped) {
  std::vector<BandSegment> segments;
  const auto list = object.find("segments");
  if (list == object.end() || !list->is_array()) return segments;
  for (const json& one : *list) {
    const auto edges = EdgesOf(one);
    const auto use = edges ? UseOf(one) : std::nullopt;
    if (!edges || !use || segments.size() == kMostSegments) {
      skipped.Note("a segment of " + band.Name);
      continue;
    }
    const BandSegment segment{std::max(edges->LowMHz, band.LowMHz), std::min(edges->HighMHz, band.HighMHz),
                              *use};
    if (segment.HighMHz > segment.LowMHz)
      segments.push_back(segment);
    else
      skipped.Note("a segment outside " + band.Name);
  }
  return Apart(std::move(segments), skipped, "segments");
}

std::optional<PlannedBand> BandOf(const json& object, Skipped& skipped) {
  const auto edges = EdgesOf(object);
  if (!edges) return std::nullopt;
  const auto at = object.find("name");
  const std::string* name = at == object.end() ? nullptr : at->get_ptr<const std::string*>();
  const auto printable = [](char c) { return c >= ' ' && c <= '~'; };
  if (name == nullptr || name->empty() || name->size() > kMostName || !std::ranges::all_of(*name, printable))
    return std::nullopt;
  PlannedBand band{*name, edges->LowMHz, edges->HighMHz, {}};
  band.Segments = SegmentsOf(object, band, skipped);
  return band;
}

/// A band that lost its beginning to the one below it.
void CutSegments(PlannedBand& band) {
  std::erase_if(band.Segments, [&band](const BandSegment& s) { return s.HighMHz <= band.LowMHz; });
  if (!band.Segments.empty())
    band.Segments.front().LowMHz = std::max(band.Segments.front().LowMHz, band.LowMHz);
}

}  // namespace

std::string_view BandUseText(BandUse use) {
  return kUses[static_cast<std::size_t>(use)];
}

std::string BandPlan::NameAt(double mhz) const {
  if (Empty()) return {};
  const auto holds = [mhz](const auto& span) { return mhz >= span.LowMHz && mhz < span.HighMHz; };
  auto band = std::ranges::find_if(bands_, holds);
  // The upper edge itself is still the band's.
  if (band == bands_.end()) band = std::ranges::find(bands_, mhz, &PlannedBand::HighMHz);
  if (band == bands_.end()) return "out of band";
  auto segment = std::ranges::find_if(band->Segments, holds);
  if (segment == band->Segments.end())
    segment = std::ranges::find(band->Segments, mhz, &BandSegment::HighMHz);
  if (segment == band->Segments.end()) return band->Name;
  return band->Name + " " + std::string(BandUseText(segment->Use));
}

ReadBandPlan ParseBandPlan(std::string_view text) {
  if (text.size() > kMostBytes) return {{}, "it is larger than 1 MiB"};
  const json root = json::parse(text, nullptr, false);
  if (!root.is_object()) return {{}, "it is no JSON object"};
  const auto list = root.find("bands");
  if (list == root.end() || !list->is_array()) return {{}, "it has no list \"bands\""};
  Skipped skipped;
  std::vector<PlannedBand> bands;
  for (const json& one : *list) {
    auto band = bands.size() < kMostBands ? BandOf(one, skipped) : std::nullopt;
    if (band)
      bands.push_back(*std::move(band));
    else
      skipped.Note("a band");
  }
  bands = Apart(std::move(bands), skipped, "bands");
  for (PlannedBand& band : bands) CutSegments(band);
  const std::string what = skipped.Text();
  if (bands.empty()) return {{}, "it holds no band"};
  return {BandPlan(std::move(bands)), what.empty() ? what : "skipped or cut: " + what};
}

}  // namespace spectrino
