// The function that the excerpts call with complaints. It counts those that are not empty.
#pragma once

#include <vsa/vsa.h>

inline int complaints = 0;

inline void complain(const zn::String& text) {
  if (!text.isEmpty()) ++complaints;
}
