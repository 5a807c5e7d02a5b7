#include "k4/K4Record.h"

#include <algorithm>
#include <array>

namespace spectrino {
namespace {

struct Width {
  std::string_view Field;
  std::size_t Characters;
};
constexpr std::array kWidths = std::to_array<Width>(
    {{"AC", 6},  {"AG", 7}, {"AG$", 7}, {"AI", 4},  {"AP", 3},  {"BG", 4},  {"BN", 5},  {"BW", 7},
     {"CM", 4},  {"CN", 5}, {"CP", 6},  {"CT", 4},  {"CW", 5},  {"DB", 12}, {"DC", 5},  {"DL", 6},
     {"DQ", 4},  {"DT", 4}, {"FA", 14}, {"FB", 14}, {"FC", 13}, {"FD", 11}, {"FI", 7},  {"FL", 9},
     {"FS", 4},  {"FT", 4}, {"GT", 7},  {"IC", 8},  {"ID", 6},  {"IF", 38}, {"IS", 7},  {"K2", 4},
     {"K3", 4},  {"K4", 4}, {"KS", 6},  {"LK", 4},  {"LK$", 4}, {"MD", 4},  {"MG", 6},  {"ML", 6},
     {"NB", 5},  {"NL", 7}, {"NL$", 7}, {"NR", 5},  {"OF", 12}, {"OI", 38}, {"PA", 4},  {"PC", 6},
     {"PK", 51}, {"PS", 4}, {"QC", 6},  {"RA", 7},  {"RG", 6},  {"SA", 18}, {"SD", 7},  {"SH", 5},
     {"SL", 5},  {"SM", 7}, {"SQ", 7},  {"SQ$", 7}, {"ST", 5},  {"TD", 5},  {"TM", 14}, {"TN", 5},
     {"TO", 4},  {"TQ", 4}, {"TS", 4},  {"TY", 6},  {"VT", 5},  {"VX", 4},  {"XF", 4},  {"XF$", 4}});
static_assert(std::ranges::is_sorted(kWidths, {}, &Width::Field));

}  // namespace

void K4Record::Store(std::string_view field, std::string_view text) {
  std::string stored(text);
  const auto width = std::ranges::lower_bound(kWidths, field, {}, &Width::Field);
  if (width != kWidths.end() && width->Field == field) stored.resize(width->Characters, ' ');
  const auto place = fields_.find(field);
  if (place != fields_.end())
    place->second = std::move(stored);
  else
    fields_.emplace(field, std::move(stored));
}

std::string_view K4Record::Text(std::string_view field) const {
  const auto place = fields_.find(field);
  return place == fields_.end() ? std::string_view{} : std::string_view(place->second);
}

void K4Record::Replace(std::string_view field, std::size_t position, char with) {
  const auto place = fields_.find(field);
  if (place != fields_.end() && position >= 1 && position <= place->second.size())
    place->second[position - 1] = with;
}

}  // namespace spectrino
