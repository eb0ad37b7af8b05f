// ListReader: splits a list into elements by the rules of the lexer.
#include <vsa/foundation/char_class.h>
#include <vsa/syntax.h>

namespace vsa {

namespace {

namespace char_class = zn::char_class;

}  // namespace

void ListReader::add(std::string_view piece) noexcept {
  at_ = piece.data();
  end_ = at_ + piece.size();
  if (last_ != Last::Nothing || piece.empty()) return;
  open_ = *at_++;
  close_ = open_ == '(' ? ')' : '}';
  last_ = Last::Open;
}

bool ListReader::next(ListPart& out) noexcept {
  while (at_ < end_ && !char_class::is(*at_, char_class::NUMBER)) skipOther(*at_++);
  if (at_ == end_) return false;
  if (pending_ != Pending::No && last_ == Last::Number) last_ = Last::Blank;
  pending_ = Pending::No;
  const char* const begin = at_;
  while (at_ < end_ && char_class::is(*at_, char_class::NUMBER)) ++at_;
  out = {{begin, static_cast<std::size_t>(at_ - begin)}, last_ == Last::Number};
  last_ = Last::Number;
  return true;
}

// Processes a character that is not part of a number. White space and separators after a number
// become one blank, except directly before a closing bracket of the list's own kind.
void ListReader::skipOther(char c) noexcept {
  const bool isWhite = char_class::is(c, char_class::WHITE);
  if (pending_ == Pending::AfterWhite && isWhite) return;
  if (pending_ != Pending::No && c != close_ && last_ == Last::Number) last_ = Last::Blank;
  pending_ = Pending::No;
  if (isWhite) {
    pending_ = Pending::AfterWhite;
  } else if (c != open_ && c != close_) {
    pending_ = Pending::AfterSeparator;
  }
}

}  // namespace vsa
