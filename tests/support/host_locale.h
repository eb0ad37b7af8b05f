// A locale that a host may have set for its own purposes: commas in reals, groups of digits, other
// words for true and false, and no character that is a digit, a letter or a blank.
#pragma once

#include <clocale>
#include <locale>
#include <string>
#include <vector>

namespace vsa_tests {

class CommaNumbers final : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
  std::string do_truename() const override { return "wahr"; }
  std::string do_falsename() const override { return "falsch"; }
};

class NoCharacterClasses final : public std::ctype<char> {
 public:
  NoCharacterClasses() : std::ctype<char>(table()) {}

 private:
  static const mask* table() {
    static const mask none[table_size] = {};
    return none;
  }
};

/// The names of locales of other customs that this system has; "C" first. Not every system has one:
/// the script same_everywhere.sh makes them for itself.
inline std::vector<const char*> cLocales() {
  std::vector<const char*> names = {"C"};
  for (const char* const name : {"de_DE.UTF-8", "de_DE.utf8", "tr_TR.UTF-8", "tr_TR.utf8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) names.push_back(name);
  }
  std::setlocale(LC_ALL, "C");
  return names;
}

/// The C++ locale above, and the C locale of that name, for as long as the object lives.
class HostLocale {
 public:
  explicit HostLocale(const char* cLocale)
      : before_(std::locale::global(
            std::locale(std::locale(std::locale::classic(), new CommaNumbers),
                        static_cast<std::ctype<char>*>(new NoCharacterClasses)))) {
    std::setlocale(LC_ALL, cLocale);
  }
  HostLocale(const HostLocale&) = delete;
  HostLocale& operator=(const HostLocale&) = delete;
  ~HostLocale() {
    std::locale::global(before_);
    std::setlocale(LC_ALL, "C");
  }

 private:
  std::locale before_;
};

}  // namespace vsa_tests
