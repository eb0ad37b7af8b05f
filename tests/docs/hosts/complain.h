// Defines complain(), which code blocks of the documentation call. It counts the complaints that
// are not empty.
#pragma once

#include <vsa/vsa.h>

inline int complaints = 0;

inline void complain(const zn::String& text) {
  if (!text.isEmpty()) ++complaints;
}
