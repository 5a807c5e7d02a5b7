#include "catserver/CatRequest.h"

#include <algorithm>
#include <array>

namespace spectrino {
namespace {

struct Row {
  char Letter;  ///< 0: by its long name alone
  std::string_view Name;
  CatVerb Verb;
  std::size_t Arguments = 0;
  bool TakesVfo = false;
};

constexpr auto kRows = std::to_array<Row>({
    {'f', "get_freq", CatVerb::GetFreq, 0, true},
    {'F', "set_freq", CatVerb::SetFreq, 1, true},
    {'m', "get_mode", CatVerb::GetMode, 0, true},
    {'M', "set_mode", CatVerb::SetMode, 2, true},
    {'v', "get_vfo", CatVerb::GetVfo},
    {'V', "set_vfo", CatVerb::SetVfo, 1},
    {'s', "get_split_vfo", CatVerb::GetSplitVfo, 0, true},
    {'S', "set_split_vfo", CatVerb::SetSplitVfo, 2, true},
    {'i', "get_split_freq", CatVerb::GetSplitFreq, 0, true},
    {'I', "set_split_freq", CatVerb::SetSplitFreq, 1, true},
    {'x', "get_split_mode", CatVerb::GetSplitMode, 0, true},
    {'X', "set_split_mode", CatVerb::SetSplitMode, 2, true},
    {'t', "get_ptt", CatVerb::GetPtt, 0, true},
    {'T', "set_ptt", CatVerb::SetPtt, 1, true},
    {'l', "get_level", CatVerb::GetLevel, 1, true},
    {'L', "set_level", CatVerb::SetLevel, 2, true},
    {'u', "get_func", CatVerb::GetFunc, 1, true},
    {'U', "set_func", CatVerb::SetFunc, 2, true},
    {'_', "get_info", CatVerb::GetInfo},
    {'\x88', "get_powerstat", CatVerb::GetPowerStat},
    {0, "get_lock_mode", CatVerb::GetLockMode},
    {0, "get_vfo_info", CatVerb::GetVfoInfo, 1},
    {0, "get_vfo_list", CatVerb::GetVfoList},
    {0, "set_vfo_opt", CatVerb::SetVfoOpt, 1},
    {0, "chk_vfo", CatVerb::CheckVfo},
    {0, "dump_state", CatVerb::DumpState},
    {'q', "quit", CatVerb::Quit},
    {'Q', "quit", CatVerb::Quit},
});
/// Letters of the protocol that have no row.
constexpr std::string_view kOtherLetters = "JjZzYybRrOoCcDdNnPpBEeGgHhAa*12345wWkK";
/// A query for what there is takes the place of a request's arguments.
constexpr std::string_view kQuery = "?";

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

void SkipBlanks(std::string_view& line) {
  while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
}

std::string_view TakeWord(std::string_view& line) {
  SkipBlanks(line);
  std::size_t length = 0;
  while (length < line.size() && !IsBlank(line[length])) ++length;
  const std::string_view word = line.substr(0, length);
  line.remove_prefix(length);
  return word;
}

bool IsNameLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

const Row* FoundRow(const Row* at) {
  return at == kRows.end() ? nullptr : at;
}

/// Takes letter or long name. The row; or null, and the verb says whether it is of the protocol.
const Row* TakeName(std::string_view& line, CatRequest& request) {
  if (line.front() != '\\') {
    const char letter = line.front();
    line.remove_prefix(1);
    const bool known = kOtherLetters.find(letter) != std::string_view::npos;
    request.Verb = known ? CatVerb::NotServed : CatVerb::Nonsense;
    return FoundRow(std::ranges::find(kRows, letter, &Row::Letter));
  }
  line.remove_prefix(1);
  request.Name = TakeWord(line);
  const bool named = !request.Name.empty() && std::ranges::all_of(request.Name, IsNameLetter);
  request.Verb = named ? CatVerb::NotServed : CatVerb::Nonsense;
  return FoundRow(std::ranges::find(kRows, request.Name, &Row::Name));
}

void TakeArguments(const Row& row, bool vfoMode, std::string_view& line, CatRequest& request) {
  if (vfoMode && row.TakesVfo) {
    request.Target = TakeWord(line);
    request.Whole = !request.Target.empty();
  }
  for (std::size_t i = 0; i < row.Arguments; ++i) {
    request.Arguments[i] = TakeWord(line);
    if (request.Arguments[i].empty()) request.Whole = false;
    if (i == 0 && request.Arguments[i] == kQuery) break;
  }
}

}  // namespace

std::string CatRequest::Given() const {
  std::string given(Target);
  for (const std::string_view argument : Arguments) {
    if (argument.empty()) continue;
    if (!given.empty()) given += ' ';
    given += argument;
  }
  return given;
}

std::optional<CatRequest> TakeRequest(std::string_view& line, bool vfoMode) {
  SkipBlanks(line);
  if (line.empty() || line.front() == '#') {
    line = {};
    return std::nullopt;
  }
  CatRequest request;
  constexpr std::string_view kSeparators = "+;|,";
  if (kSeparators.find(line.front()) != std::string_view::npos) {
    request.Separator = line.front() == '+' ? '\n' : line.front();
    line.remove_prefix(1);
    SkipBlanks(line);
  }
  const Row* row = line.empty() ? nullptr : TakeName(line, request);
  if (row == nullptr) {
    line = {};
    return request;
  }
  request.Verb = row->Verb;
  request.Name = row->Name;
  TakeArguments(*row, vfoMode, line, request);
  return request;
}

}  // namespace spectrino
