// The chosen source: found again whatever was plugged in, and the same in the file after any choice.
#include "settings/SourceChoice.h"

#include "fakes/RadioSources.h"
#include "settings/CatComposition.h"
#include "settings/Keys.h"
#include "settings/TestStore.h"

namespace spectrino {
namespace {

const std::vector<SoundDevice> kCards{{"Built-in", "id-a"}, {"UAC2", "id-b"}, {"UAC2", "id-c"}};

using SourceTest = test::StoreTest;

TEST_F(SourceTest, IsFoundAgainAndKeptInTheFile) {
  const struct {
    std::string File, Shown;  ///< shown: in the list of kCards and the radios
    int At;
  } stores[] = {{"", "Built-in", 0},
                {"Device=1\nNDevice= UAC2 \n", "UAC2", 1},
                {"Device=2\nNDevice=UAC2\n", "UAC2", 2},  // two of one model: the index decides
                {"Device=0\nNDevice=UAC2\n", "UAC2", 1},
                {"Device=0\nDeviceId=id-c\n", "UAC2", 2},
                {"Device=4\n", " (missing)", 6},  // an input's index never reaches the radios
                {"Device=1\nNDevice=Gone\n", "Gone (missing)", 6},
                {"Device=0\nNDevice=Built-in\nDeviceId=id-x\n", "Built-in (missing)", 6},
                {"Device=1\nNDevice=UAC2\nICOM=1\nK4=1\n", "ICOM", 3},
                {"Device=9\nK4=1\nK4D=1\n", "K4", 4},
                {"Device=4\nNDevice=K4D\nK4D=1\n", "K4D", 5}};
  for (const auto& stored : stores) {
    SCOPED_TRACE(stored.File);
    Write("[Setup]\n" + stored.File);
    SetupSection keys(Store);
    const SourceList list(kCards, kRadioSources);
    const ChosenSource chosen = ReadSource(keys, {}, kRadioSources);
    const SourceList::Shown shown = list.Show(chosen);
    EXPECT_EQ(shown.Current, stored.At);
    EXPECT_EQ(shown.Names.at(static_cast<std::size_t>(shown.Current)), stored.Shown);
    // Stored as it was listed and read again, it is the same source.
    SetupBatch batch(keys);
    PutSource(batch, list, list.Current(chosen));
    PutRadioFlags(batch, chosen.Id, kRadioSources);
    batch.Save();
    EXPECT_EQ(list.Show(ReadSource(keys, {}, kRadioSources)).Names, shown.Names);
    EXPECT_EQ(list.Find(ReadSource(keys, {}, kRadioSources)), list.Find(chosen));
  }
}

TEST_F(SourceTest, ANameIsKeptWhereTheFileNamesNone) {
  EXPECT_EQ(ReadSource(SetupSection(Store), {{}, "UAC2"}, kRadioSources).Name, "UAC2");
}

TEST(CatComposition, AnotherSourceIsReachedWithoutAQuestion) {
  const struct {
    CatControl Stored;
    SourceKind Source;
    IcomData Data;
    CatControl Becomes;
  } cases[] = {
      {CatControl::BridgeFixedLo, SourceKind::Icom, IcomData::SerialPort, CatControl::RadioDirect},
      {CatControl::HostIf, SourceKind::Icom, IcomData::ViaHost, CatControl::IcomViaHost},
      {CatControl::IcomViaHost, SourceKind::SoundInput, IcomData::ViaHost, CatControl::HostIf},
      {CatControl::RadioDirect, SourceKind::Demo, IcomData::SerialPort, CatControl::HostIf},
      {CatControl::FixedLo, SourceKind::K4, IcomData::SerialPort, CatControl::RadioDirect},
      {CatControl::HostIf, SourceKind::Radio, IcomData::ViaHost, CatControl::RadioDirect},
      {CatControl::KetrelIf, SourceKind::K4D, IcomData::SerialPort, CatControl::KetrelIf},
      {CatControl::FixedLo, SourceKind::Recording, IcomData::SerialPort, CatControl::FixedLo},
  };
  for (const auto& at : cases)
    EXPECT_EQ(ControlForSource(at.Stored, at.Source, at.Data), at.Becomes)
        << static_cast<int>(at.Stored) << " with source " << static_cast<int>(at.Source);
}

}  // namespace
}  // namespace spectrino
