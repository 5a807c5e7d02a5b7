#include "civ/ScanCommands.h"

#include <algorithm>
#include <string>

#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::string_view kSection = "SCIcom";

/// The key of a list with count entries: "94Scan".
IntKey ListKey(const std::string& radioId, std::string_view name, std::size_t count, std::int32_t entry) {
  const auto last = static_cast<std::int32_t>(count) - 1;
  return {KeyName(radioId + std::string(name)), entry, {0, last, entry}};
}

struct ScanKeys {
  IntKey Scan, DFScan, RESScan;
};
ScanKeys KeysOf(const std::string& radioId) {
  constexpr ScanChoice kDefault;
  return {ListKey(radioId, "Scan", kScanTypes.size(), kDefault.Scan),
          ListKey(radioId, "DFScan", kDeltaFSpans.size(), kDefault.DFScan),
          ListKey(radioId, "CHREScan", kResumes.size(), kDefault.RESScan)};
}

/// A list without a selection counts as its first entry.
std::size_t Entry(int entry, std::size_t count) {
  return std::min(static_cast<std::size_t>(std::max(entry, 0)), count - 1);
}

}  // namespace

void ScanCommands::MainChkScan_Click(bool checked) {
  if (parts_.State.ScanDialogOpen) return;
  if (!checked) {
    StopScan();
    return;
  }
  // A window that stays on top could cover the dialog.
  parts_.Main.AllowOnTop(false);
  parts_.Sender.SendCiv("27", "11", "00");
  parts_.State.ScanDialogOpen = true;
  parts_.Windows.ShowScanDialog(*this, LoadChoice());
}

void ScanCommands::chkScan_Click(bool checked, const ScanChoice& choice) {
  if (!checked) {
    StopScan();
    return;
  }
  CivState& state = parts_.State;
  const std::size_t span = Entry(choice.DFScan, kDeltaFSpans.size());
  const bool resume = Entry(choice.RESScan, kResumes.size()) == 1;
  const std::string_view code = kScanTypes[Entry(choice.Scan, kScanTypes.size())].Code;
  parts_.Sender.SendCiv("0E", "", std::string{'A', static_cast<char>('1' + span)});
  parts_.Sender.SendCiv("0E", "", resume ? "D3" : "D0");
  state.ScanCode = static_cast<int>(Val(code));
  parts_.Store.SaveSetting(kOwnApplication, kSection, state.RadioId + "ScanCMD", code);
  parts_.Sender.SendCiv("0E", "", code);
}

void ScanCommands::Unload(const ScanChoice& choice) {
  CivState& state = parts_.State;
  // While ScanDialogOpen still stands, so that the box's handler stops nothing.
  if (state.ScanCode == 0) parts_.Windows.ClearScanCheck();
  state.ScanDialogOpen = false;
  const ScanKeys keys = KeysOf(state.RadioId);
  SetupSection section(parts_.Store, kSection);
  SetupBatch(section)
      .Put(keys.Scan, choice.Scan)
      .Put(keys.DFScan, choice.DFScan)
      .Put(keys.RESScan, choice.RESScan)
      .Save();
  parts_.Sender.SendCiv("27", "11", "01");
  parts_.Main.AllowOnTop(true);
}

ScanChoice ScanCommands::LoadChoice() const {
  const ScanKeys keys = KeysOf(parts_.State.RadioId);
  const SetupSection section(parts_.Store, kSection);
  return {section.Read(keys.Scan), section.Read(keys.DFScan), section.Read(keys.RESScan)};
}

void ScanCommands::StopScan() {
  parts_.Sender.SendCiv("0E", "", "00");
  parts_.State.ScanCode = 0;
  parts_.Sender.RequestIcomStatus();
}

}  // namespace spectrino
