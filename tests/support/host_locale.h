// HostLocale: a locale that a host program may set. It has decimal commas, grouped digits, other
// words for true and false, and character classes without any character.
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

/// Returns the names of C locales for tests: "C", and those of the German and Turkish locales below
/// that this system has. A system may have none of them. same_everywhere.sh therefore creates its
/// own locales. Sets the C locale to "C".
inline std::vector<const char*> cLocales() {
  std::vector<const char*> names = {"C"};
  for (const char* const name : {"de_DE.UTF-8", "de_DE.utf8", "tr_TR.UTF-8", "tr_TR.utf8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) names.push_back(name);
  }
  std::setlocale(LC_ALL, "C");
  return names;
}

/// Sets the C++ locale above and the C locale `cLocale`. The destructor restores the C++ locale and
/// sets the C locale to "C".
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
