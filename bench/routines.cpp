// How long the routines that a player waits for take, with the real main window, up to the painted picture. Run without
// a screen: QT_QPA_PLATFORM=offscreen.

#include <benchmark/benchmark.h>

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLoggingCategory>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "net/frm_control.h"
#include "net/frm_welcome.h"
#include "net/wire.h"
#include "platform/application.h"
#include "platform/drawing/picture.h"
#include "table/frm_chess.h"
#include "table/frm_tool_window.h"

namespace morva {
namespace {

// The history and the log are emptied after this many lines, so that each line finds them as in a game.
constexpr int kLines = 200;

const std::string kStart = "fhgjighfeeeeeeee" + std::string(32, 'd') + "ooooooooprqtsqrp";

// Runs what is waiting, the painting included.
void Paint() { QCoreApplication::processEvents(); }

class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* watched) {
    const auto* scrolled = qobject_cast<QAbstractScrollArea*>(watched);
    (scrolled != nullptr ? scrolled->viewport() : watched)->installEventFilter(this);
  }
  int count = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

// Runs the steps in turn, each with its painting; what is painted must be `watched`, each time. What a step takes away
// is brought back unmeasured.
void Measure(benchmark::State& state, const Control& watched, const std::vector<std::function<void()>>& steps,
             const std::function<void()>& bring_back = {}) {
  frmChess->SetUpChess();
  for (const auto& step : steps) step();
  frmChess->SetUpChess();
  Paint();
  PaintCounter paints(watched.Native());
  std::size_t next = 0;
  int lines = 0;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    const int painted = paints.count;
    steps[next]();
    // A new line of the log is laid out in one turn of the event loop and painted in the next.
    for (int turns = 0; turns < 2 && paints.count == painted; ++turns) Paint();
    if (paints.count == painted) {
      state.SkipWithError("not everything was painted");
      break;
    }
    if (bring_back) {
      state.PauseTiming();
      bring_back();
      Paint();
      state.ResumeTiming();
    }
    next = (next + 1) % steps.size();
    if (++lines < kLines || next != 0) continue;
    state.PauseTiming();
    lines = 0;
    frmChess->ClearHistory();
    frmChess->txtOut.Text = "";
    Paint();
    state.ResumeTiming();
  }
}

void MeasureReceived(benchmark::State& state, const Control& watched, const std::vector<std::string>& messages,
                     const std::function<void()>& bring_back = {}) {
  std::vector<std::function<void()>> steps;
  for (const std::string& message : messages) {
    steps.push_back([message] { frmControl->tcp.Message(message); });
  }
  Measure(state, watched, steps, bring_back);
}

void BoardLine(benchmark::State& state) {
  const auto read = [](const std::string& line) {
    for (int i = 0; i < 64; ++i) frmChess->ReadLetter(i, static_cast<unsigned char>(line[static_cast<std::size_t>(i)]));
  };
  Measure(state, frmChess->squ(0), {[&] { read(std::string(kStart.rbegin(), kStart.rend())); }, [&] { read(kStart); }});
}

void DoMove(benchmark::State& state) {
  Measure(state, frmChess->squ(36), {[] { frmChess->DoMove(52, 36); }, [] { frmChess->DoMove(36, 52); }});
}

void Hover(benchmark::State& state) {
  Measure(state, frmChess->squ(36), {[] {
            frmChess->squ(36).Cls();
            frmChess->hover(36, kBlack);
          }});
}

// A pointer that has been over the same empty square for a while: what was drawn before is still there.
void DragOver(benchmark::State& state, int square) {
  frmChess->SetUpChess();
  Paint();
  for (auto iteration : state) {
    static_cast<void>(iteration);
    frmChess->squ(square).DragOver(frmChess->squ(52), 400, 400, DragState::kOver);
    Paint();
  }
  frmChess->SetUpChess();
}

void DragOverEmpty(benchmark::State& state) { DragOver(state, 36); }

void DragOverPiece(benchmark::State& state) { DragOver(state, 12); }

// What the 64 squares, a move or a mark cost when none of their pictures has been drawn before.
void PictureDrawnAnew(benchmark::State& state) {
  frmChess->Pawn(36, 1);
  Color background = kLightSquare;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    benchmark::DoNotOptimize(PictureOf(frmChess->squ(36).Strokes(), ++background & kWhite, 52, 52, 1.0));
  }
}

void Chat(benchmark::State& state) { MeasureReceived(state, frmChess->txtOut, {"0Good luck, have a nice game!"}); }

void CannedWord(benchmark::State& state) {
  frmChess->mnuAcceptMessages.Checked = false;
  // Nothing is painted for it.
  for (auto iteration : state) {
    static_cast<void>(iteration);
    frmControl->tcp.Message("0check");
    Paint();
  }
}

void Move(benchmark::State& state) { MeasureReceived(state, frmChess->squ(36), {"15236", "13652"}); }

void MoveInLongGame(benchmark::State& state) {
  constexpr int kPlayed = 10'000;
  for (int line = 0; line < kPlayed; ++line) frmChess->AddHistoryLine("Bob: E7 - E5 (white pawn)", line);
  Paint();
  bool back = false;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    frmControl->tcp.Message(back ? "13652" : "15236");
    for (int turn = 0; turn < 2; ++turn) Paint();
    back = !back;
  }
  frmChess->ClearHistory();
  frmChess->SetUpChess();
}

// The processor time of the longest event of a game against a nick of a million letters.
void LongNick(benchmark::State& state) {
  for (auto iteration : state) {
    static_cast<void>(iteration);
    double longest = 0;
    for (int move = -1; move < 60; ++move) {
      const std::clock_t began = std::clock();
      frmControl->tcp.Message(move < 0 ? "2" + std::string(1'000'000, 'x') : move % 2 == 0 ? "15236" : "13652");
      Paint();
      longest = std::max(longest, static_cast<double>(std::clock() - began) / CLOCKS_PER_SEC);
    }
    state.SetIterationTime(longest);
  }
  frmControl->tcp.Message("2Bob");
  frmChess->ClearHistory();
  frmChess->SetUpChess();
}

void WholeBoard(benchmark::State& state) {
  MeasureReceived(state, frmChess->squ(0), {"1__" + std::string(kStart.rbegin(), kStart.rend()), "1__" + kStart});
}

void NewChess(benchmark::State& state) { MeasureReceived(state, frmChess->squ(0), {"1new"}); }

void NewCheckers(benchmark::State& state) { MeasureReceived(state, frmChess->squ(1), {"1newc"}); }

void ClearBoard(benchmark::State& state) {
  MeasureReceived(state, frmChess->squ(0), {"1clear"}, [] { frmChess->SetUpChess(); });
}

void Nick(benchmark::State& state) { MeasureReceived(state, frmToolWindow->lblOpNick, {"2Bob", "2Robert"}); }

void Trash(benchmark::State& state) {
  MeasureReceived(state, frmChess->squ(52), {"352"}, [] { frmChess->Pawn(52, 1); });
}

void Change(benchmark::State& state) { MeasureReceived(state, frmChess->squ(36), {"43660", "436216777215"}); }

BENCHMARK(BoardLine)->Name("a board line, read and painted");
BENCHMARK(DoMove)->Name("a move, done and painted");
BENCHMARK(Hover)->Name("a mark under a drag, drawn and painted");
BENCHMARK(DragOverEmpty)->Name("a pointer move of a drag over an empty square");
BENCHMARK(DragOverPiece)->Name("a pointer move of a drag over a piece");
BENCHMARK(PictureDrawnAnew)->Name("a pawn's picture, drawn anew");
BENCHMARK(Chat)->Name("received: a chat line");
BENCHMARK(CannedWord)->Name("received: a canned word, not accepted");
BENCHMARK(Move)->Name("received: a move");
BENCHMARK(MoveInLongGame)->Name("received: a move after 10,000 others");
BENCHMARK(LongNick)->UseManualTime()->Iterations(3)->Name("received: a nick of 1 MB and 60 moves, the longest event");
BENCHMARK(WholeBoard)->Name("received: a board");
BENCHMARK(NewChess)->Name("received: a new chess game");
BENCHMARK(NewCheckers)->Name("received: a new checkers game");
BENCHMARK(ClearBoard)->Name("received: a cleared board");
BENCHMARK(Nick)->Name("received: a nick");
BENCHMARK(Trash)->Name("received: a trashed square");
BENCHMARK(Change)->Name("received: a changed piece");

// The table of a guest whose host has never answered: everything is there but the other side.
bool SitDown() {
  frmWelcome->txtNick.Text = "Ann";
  Load(frmControl);
  frmControl->tcp.Closed = [] {};
  frmControl->Enabled = false;
  frmChess->Nick = "Ann";
  frmChess->OpNick = "Bob";
  frmChess->mnuPlaySounds.Checked = false;
  frmChess->Show();
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 5000) {
    Paint();
    const QWindow* window = frmChess->Native()->windowHandle();
    const QWindow* tools = frmToolWindow->Native()->windowHandle();
    if (window != nullptr && window->isExposed() && tools != nullptr && tools->isExposed()) return true;
  }
  return false;
}

}  // namespace
}  // namespace morva

int main(int argc, char** argv) {
  using namespace morva;
  Application application(argc, argv);
  // Without a screen no window can be raised, and Qt says so each time.
  QLoggingCategory::setFilterRules("default.warning=false");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  game_window = []() -> GameWindow& { return *frmChess; };
  if (!SitDown()) {
    std::fputs("The main window has not come up.\n", stderr);
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  Unload(frmChess);
  return 0;
}
