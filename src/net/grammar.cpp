#include "net/grammar.h"

#include <algorithm>

#include "net/wire.h"
#include "platform/system/values.h"

// The grammar is ambiguous in these places:
//
//   received                      possible readings                     decided by
//   "3" and two digits up to 63   trash of a one-digit square and the   the reading whose rest parses as messages; of
//                                 next message, or of a two-digit       two, the one that does not end in a chat line
//                                 square                                or a cut message; else two digits
//   64 board letters, more        the next message, or the rest of a    whether it parses as messages by the time that
//                                 board line longer than the board      the connection falls quiet
//   "1new", "c"                   new chess and the next message, or    new checkers: no message begins with "c"
//                                 new checkers
//   "4", three digits, a digit    either colour                         the first digit of the colour, which also tells
//                                                                       its length
//   "me" or "you", more           the word and the next message, or a   always the word
//                                 chat line without its first letter
//   a chat line or nick, more     one long line, or the next message    the quiet period between: any after a short
//                                                                       one, kLastQuietMs after a long one
//   a long line, kLongQuietMs of  a late packet of it, or the next      messages if they are complete at the next quiet
//   quiet, more                   messages                              period and none is a chat line; else a packet

namespace morva {
namespace {

constexpr std::size_t kMinPayload = 4;  // of a move or a change

constexpr Reading Complete(std::size_t length) { return {Shape::kComplete, length}; }
constexpr Reading kIncomplete{Shape::kIncomplete};
constexpr Reading kOpen{Shape::kOpen};
constexpr Reading kRunsToEnd{Shape::kRunsToEnd};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsSquare(std::string_view two_digits) { return Val(two_digits) < kSquares; }

// The number of digits from `at` on, at most `most`.
std::size_t Digits(std::string_view text, std::size_t at, std::size_t most) {
  std::size_t count = 0;
  while (count < most && at + count < text.size() && IsDigit(text[at + count])) ++count;
  return count;
}

// A message with a fixed text.
Reading Word(std::string_view text, std::string_view word) {
  if (text.starts_with(word)) return Complete(word.size());
  return word.starts_with(text) ? kIncomplete : kRunsToEnd;
}

// "1" + four digits | "1__" + 64 bytes | "1new" | "1newc" | "1clear"
Reading BoardAction(std::string_view text, bool quiet) {
  if (text.size() == 1) return kIncomplete;
  switch (text[1]) {
    case 'n':
      if (text == "1new") return quiet ? Complete(4) : kOpen;
      if (text.starts_with("1newc")) return Complete(5);
      return Word(text, "1new");
    case 'c':
      return Word(text, "1clear");
    case '_':
      if (text.starts_with(kBoardHead) && text.size() >= kBoardBytes) return Complete(kBoardBytes);
      return text.size() < kBoardHead.size() || text.starts_with(kBoardHead) ? kIncomplete : kRunsToEnd;
    default:
      const std::size_t digits = Digits(text, 1, 4);
      if (digits == 4) return Complete(5);
      return 1 + digits == text.size() ? kIncomplete : kRunsToEnd;
  }
}

// Whether the text is "3" and 0 to 63 without a leading zero.
bool IsTrash(std::string_view text) {
  if (Digits(text, 1, 2) + 1 != text.size()) return false;
  return text.size() == 2 || (text.size() == 3 && text[1] != '0' && IsSquare(text.substr(1)));
}

Reading Trash(std::string_view text, bool quiet) {
  if (text.size() == 1) return kIncomplete;
  if (!IsDigit(text[1])) return kRunsToEnd;
  if (text.size() == 2 && IsTrash(text.substr(0, 2))) {
    const bool can_have_two = text[1] >= '1' && text[1] <= '6';
    return quiet || !can_have_two ? Complete(2) : kOpen;
  }
  if (!IsTrash(text.substr(0, 3))) return Complete(2);
  // The reading that fails on the shorter prefix is wrong, however much has been received.
  for (std::size_t seen = 3; seen <= std::min(text.size(), kLookAhead); ++seen) {
    const bool one_digit = FitOf(text.substr(2, seen - 2)) != Fit::kNone;
    const bool two_digits = FitOf(text.substr(3, seen - 3)) != Fit::kNone;
    if (!one_digit || !two_digits) return Complete(one_digit ? 2 : 3);
  }
  constexpr std::size_t kEnough = kLookAhead + 4;
  if (!quiet && text.size() < kEnough) return kOpen;
  text = text.substr(0, kEnough);
  return Complete(FitOf(text.substr(2)) > FitOf(text.substr(3)) ? 2 : 3);
}

// "4" + two digits + one digit + ("0" | "16777215")
Reading Change(std::string_view text) {
  const std::size_t digits = Digits(text, 1, 3);
  if (1 + digits == text.size()) return kIncomplete;
  if (digits < 3) return kRunsToEnd;
  const std::string_view color = text.substr(4);
  if (color.front() == '0') return Complete(5);
  const Reading white = Word(color, "16777215");
  return white.shape == Shape::kComplete ? Complete(4 + white.length) : white;
}

// Whether a self-terminating message names squares and pieces that exist.
bool MakesSense(std::string_view message) {
  if (message.front() == '4') return IsSquare(message.substr(1, 2)) && message[3] < '9';
  if (message.front() != '1' || !IsDigit(message[1])) return true;
  return IsSquare(message.substr(1, 2)) && IsSquare(message.substr(3, 2));
}

Fit FitOfAll(std::string_view text) {
  if (text.empty()) return Fit::kWhole;
  if (text.front() == '2') return Fit::kNone;  // a nick is the first message of all
  if (text == "0" || text == "3") return Fit::kCut;
  if (text.front() == '0') return Fit::kLine;
  if (text.front() == '3') {
    const Fit one_digit = IsTrash(text.substr(0, 2)) ? FitOfAll(text.substr(2)) : Fit::kNone;
    const bool two = text.size() > 2 && IsTrash(text.substr(0, 3));
    return two ? std::max(one_digit, FitOfAll(text.substr(3))) : one_digit;
  }
  const Reading reading = Read(text);
  if (reading.shape == Shape::kOpen) return Fit::kWhole;
  if (reading.shape == Shape::kIncomplete) return Fit::kCut;
  const bool message = reading.shape == Shape::kComplete && MakesSense(text.substr(0, reading.length));
  return message ? FitOfAll(text.substr(reading.length)) : Fit::kNone;
}

}  // namespace

// Reads at most the first kBoardBytes, so that the cost does not grow with a line.
Reading Read(std::string_view text, bool quiet) {
  switch (text.front()) {
    case '1':
      return BoardAction(text, quiet);
    case '3':
      return Trash(text, quiet);
    case '4':
      return Change(text);
    case 'm':
      return Word(text, "me");
    case 'y':
      return Word(text, "you");
    default:
      return kRunsToEnd;
  }
}

Fit FitOf(std::string_view text) {
  const Fit fit = FitOfAll(text.substr(0, kLookAhead));
  return text.size() > kLookAhead && fit == Fit::kCut ? Fit::kWhole : fit;
}

bool IsMessage(std::string_view text) {
  if (text.size() == 1) return text == "2";  // only a nick may be empty
  if (text.front() >= '5' && text.front() <= '9') return false;
  if (Read(text, true).shape != Shape::kIncomplete || !IsDigit(text.front())) return true;
  return text.size() > kMinPayload && !text.starts_with(kBoardHead);
}

}  // namespace morva
