#include "settings/RigList.h"

#include <algorithm>
#include <charconv>

#include "state/Val.h"

namespace spectrino {
namespace {

/// Characters begin..end-1 of a line, as far as it has them, without outer blanks.
std::string_view Column(std::string_view line, std::size_t begin, std::size_t end) {
  return begin >= line.size() ? std::string_view() : Trim(line.substr(begin, end - begin));
}

}  // namespace

std::vector<RigModel> ReadRigList(std::string_view text) {
  std::vector<RigModel> models;
  std::size_t maker = std::string_view::npos;
  std::size_t model = std::string_view::npos;
  std::size_t version = std::string_view::npos;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (version == std::string_view::npos) {
      maker = line.find("Mfg");
      model = line.find("Model");
      version = line.find("Version");
      continue;
    }
    const std::string_view number = Column(line, 0, maker);
    int value = 0;
    const auto [stop, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || stop != number.data() + number.size() || value <= 0) continue;
    std::string name(Column(line, maker, model));
    name.append(" ").append(Column(line, model, version));
    if (const std::string_view shown = Trim(name); !shown.empty())
      models.push_back({value, std::string(shown)});
  }
  std::ranges::sort(models, {}, &RigModel::Name);
  return models;
}

}  // namespace spectrino
