// What the window tells of its links, and that nothing of yesterday is shown as if it were now.
#include <QAccessible>
#include <QLabel>

#include "app/LinkView.h"
#include "app/WindowBench.h"
#include "run/RunBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

/// A run on a radio's own lines (K4) or on a sound input beside a host (Card).
struct WatchedRun {
  explicit WatchedRun(SourceKind source, CatControl control = CatControl::HostIf) {
    Bench.State.Settings.Source = {.Id = {source}, .Name = source == SourceKind::K4 ? "K4" : "Card"};
    Bench.State.Settings.Control = control;
    Bench.RadioKit.How = {.State = LinkState::Connecting};
    Bench.Cycle.Start();
    Links.RunChanged();
  }
  void TakeLine() {
    Bench.Radio.Next = {
        std::vector<float>(11, -90.0F), 10, 1, 14.0, 14.05, 14.1, -140, -40, 1, Bench.Time.Now(), kTaken};
    Bench.Radio.Ready = true;
    Bench.Cycle.Step();
  }
  /// Text and news, what is dimmed, what is dashed.
  std::string After(std::chrono::milliseconds time) {
    Bench.Time.Advance(time);
    Links.Look();
    return Links.Text() + (Links.StoppedAt() ? " |dim" : "") + (Links.RadioStale() ? " |dash" : "") +
           (Links.Backend() == nullptr ? " |mute" : "");
  }
  static constexpr std::chrono::system_clock::time_point kTaken{1000s};
  RunBench Bench;
  LinkView Links{Bench.Cycle, Bench.State, Bench.Time};
};

TEST(LinkView, ARadioIsTold_DimmedAndDashedWhileItIsNotHeard) {
  WatchedRun run(SourceKind::K4);
  LinkHealth& how = run.Bench.RadioKit.How;
  EXPECT_EQ(run.After(100ms), "") << "nothing to dim before the first line, and nothing went wrong";
  how = {.State = LinkState::Live};
  run.TakeLine();
  EXPECT_EQ(run.After(2900ms), "");
  EXPECT_EQ(run.After(200ms), "K4 sends no spectrum: is its scope on? |dim") << "its link is alive";
  EXPECT_EQ(run.Links.TakeNews(), "K4 sends no spectrum: is its scope on?");
  how = {.State = LinkState::Silent, .Since = run.Bench.Time.Now() - 3s};
  EXPECT_EQ(run.After(0ms), "K4 silent for 3 s: is it switched on? |dim |dash |mute");
  EXPECT_EQ(run.Links.TakeNews(), "K4 silent for 3 s: is it switched on?");
  EXPECT_EQ(run.After(1s), "K4 silent for 4 s: is it switched on? |dim |dash |mute");
  EXPECT_EQ(run.Links.TakeNews(), "") << "the same trouble, a second later";
  EXPECT_EQ(run.Links.StoppedAt(), run.kTaken);
  how = {.State = LinkState::Connecting};
  EXPECT_EQ(run.After(0ms), "Connecting to K4 again |dim |dash |mute");
  how = {.State = LinkState::Live};
  EXPECT_EQ(run.After(1s), " |dim") << "its lines are only late";
  EXPECT_EQ(run.Links.TakeNews(), "K4 is heard again");
  run.TakeLine();
  EXPECT_EQ(run.After(10ms), "");
  run.Bench.State.WindowMinimized = true;
  EXPECT_EQ(run.After(9s), "") << "lines wait while nobody looks";
  run.Bench.State.WindowMinimized = false;
  EXPECT_EQ(run.After(100ms), "");
  run.Bench.Radio.Pauses = true;
  EXPECT_EQ(run.After(9s), "") << "a dialog of the radio's keeps them away";
  run.Bench.Radio.Pauses = false;
  how = {.State = LinkState::Lost, .Why = "The CAT port is closed", .NextTry = run.Bench.Time.Now() + 4s};
  run.TakeLine();
  EXPECT_EQ(run.After(0ms), "The CAT port is closed. Trying again in 4 s |dash |mute") << "lines still come";
  how = {.State = LinkState::Lost,
         .Why = "refuses: is the port right?",
         .NextTry = run.Bench.Time.Now() + 4300ms};
  EXPECT_EQ(run.After(600ms), "refuses: is the port right? Trying again in 4 s |dim |dash |mute");
  EXPECT_EQ(run.After(3s), "refuses: is the port right? Trying again in 1 s |dim |dash |mute");
  EXPECT_EQ(run.After(700ms), "refuses: is the port right? Trying again now |dim |dash |mute");
  run.Bench.State.ResizeInProgress = true;
  EXPECT_EQ(run.After(10ms), "refuses: is the port right? Trying again now |dim |dash |mute")
      << "a layout heals nothing";
  run.Bench.State.ResizeInProgress = false;
  run.Bench.Cycle.Stop();
  run.Links.RunChanged();
  EXPECT_EQ(run.After(0ms), " |dim |dash |mute") << "no more than before";
  how = {.State = LinkState::Connecting};
  run.Bench.Cycle.Start();
  run.Links.RunChanged();
  EXPECT_EQ(run.After(2s), " |dash |mute") << "nothing was heard yet";
  how = {.State = LinkState::Live};
  EXPECT_EQ(run.After(2900ms), "") << "it is heard since less than that";
  EXPECT_EQ(run.Links.TakeNews(), "");
  EXPECT_EQ(run.After(200ms), "K4 sends no spectrum: is its scope on?") << "and never has";
}

TEST(LinkView, AHostThatIsGoneDashesTheHeaderOfALiveSource) {
  for (const SourceKind source : {SourceKind::SoundInput, SourceKind::K4}) {
    WatchedRun run(source, CatControl::FixedLo);
    RunBench& bench = run.Bench;
    const bool own = source == SourceKind::K4;
    if (own) bench.RadioKit.How = {.State = LinkState::Live};
    EXPECT_EQ(run.After(100ms), "");
    EXPECT_EQ(run.Links.FilterBackend(), own ? &bench.RadioRig : &bench.Host) << "whose filters are shown";
    bench.HostKit.How = {.State = LinkState::Lost, .Why = "The host program has ended"};
    EXPECT_EQ(run.After(100ms), "The host program has ended. |dash |mute");
    EXPECT_EQ(run.Links.FilterBackend(), own ? &bench.RadioRig : nullptr);
    static_cast<void>(run.Links.TakeNews());
    bench.HostKit.How = {.State = LinkState::Live};
    EXPECT_EQ(run.After(100ms), "");
    EXPECT_EQ(run.Links.TakeNews(), "The radio is heard again");
  }
}

TEST(StatusLineTest, TheMostImportantTextIsShownAndNoneIsLost) {
  using Rank = StatusLine::Rank;
  QWidget window;
  auto* line = new StatusLine(&window);
  line->Place({0, 0, 700, 80});
  line->Show(Rank::Status, "port 9201 does not answer");
  line->Show(Rank::Health, "K4 silent for 3 s");
  line->Show(Rank::Warning, "muted");
  line->Show(Rank::Passing, "no signal");
  EXPECT_EQ(line->text(), "K4 silent for 3 s");
  EXPECT_LE(line->geometry().bottom(), 80);
  for (const auto& [gone, next] : {std::pair{Rank::Health, "no signal"},
                                   {Rank::Passing, "muted"},
                                   {Rank::Warning, "port 9201 does not answer"}}) {
    line->Show(gone, {});
    EXPECT_EQ(line->text(), next);
  }
  line->Show(Rank::Status, {});
  EXPECT_TRUE(line->isHidden());
}

/// The brightest pixel where signals stand and no text does.
int Brightest(const QImage& picture) {
  int most = 0;
  for (int y = 45; y < picture.height(); ++y)
    for (int x = picture.width() * 7 / 10; x < picture.width() * 9 / 10; ++x)
      most = std::max(most, qGray(picture.pixel(x, y)));
  return most;
}

class Links : public Window {};

// A real link: a simulated K4 on real sockets that falls silent, goes away and comes back.
TEST_F(Links, AK4ThatFallsSilentIsToldWithinThreeSecondsAndComesBackByItself) {
  auto radio = std::make_unique<K4SimServer>(K4SimServer::Options{.Faults = {.SilentAfterS = 3}});
  ASSERT_TRUE(radio->Start());
  const quint16 cat = radio->CatPort(), pan = radio->PanPort();
  QDir(folder_.path()).mkpath("spectrino");
  QFile file(folder_.filePath("spectrino/Spectrino.ini"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QString("[Setup]\nK4=1\nOptFreq=7\nWF=3\nK4TCP=127.0.0.1\nK4CATPORT=%1\nK4PANPORT=%2\n")
                 .arg(cat)
                 .arg(pan)
                 .toUtf8());
  file.close();
  Reload();
  auto* scope = Find<ScopeWidget>("Scope");
  const auto* status = Find<QLabel>("lblStatus");
  Click("StartButton");
  ASSERT_TRUE(LinesCome(10));
  ASSERT_TRUE(QTest::qWaitFor([&] { return Find<QLabel>("lblMode")->text() == "USB"; }, 3000));
  const int live = Brightest(scope->grab().toImage());

  std::uint64_t lines = 0;
  QElapsedTimer sinceLine;
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        if (lines != Lines()) sinceLine.restart();
        lines = Lines();
        return status->isVisible();
      },
      15000));
  EXPECT_LE(sinceLine.elapsed(), 3000);
  EXPECT_TRUE(status->text().startsWith("K4 silent for ")) << qPrintable(status->text());
  EXPECT_TRUE(scope->accessibleName().startsWith("K4 silent")) << "spoken";
  EXPECT_EQ(Find<QLabel>("lblFreqA")->accessibleDescription(), "---------");
  EXPECT_EQ(Find<QLabel>("lblMode")->text() + Find<QLabel>("lblSMeter")->text(), "----");
  EXPECT_LT(Brightest(scope->grab().toImage()), 0.6 * live);
  const double before = radio->Radio().HertzOf("FA");
  QTest::mouseClick(scope, Qt::LeftButton, {}, QPoint(300, 50));
  QTest::mouseClick(Find<QLabel>("lblFreqA"), Qt::LeftButton);
  EXPECT_FALSE(Find<QLineEdit>("txtFrequency")->isVisible());
  QTest::qWait(200);
  EXPECT_EQ(radio->Radio().HertzOf("FA"), before) << "nothing is sent to where nobody is heard";

  radio.reset();
  radio = std::make_unique<K4SimServer>(K4SimServer::Options{.CatPort = cat, .PanPort = pan, .Faults = {}});
  ASSERT_TRUE(radio->Start());
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return !status->isVisible() && Find<QLabel>("lblMode")->text() == "USB"; }, 20000))
      << qPrintable(status->text());
  ASSERT_TRUE(LinesCome(5));
  EXPECT_GT(Brightest(scope->grab().toImage()), 0.8 * live);
}

}  // namespace
}  // namespace spectrino
