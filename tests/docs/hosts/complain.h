// The function that receives the complaints of the excerpts. It counts those that are not empty.
#pragma once

#include <vsa/vsa.h>

inline int complaints = 0;

inline void complain(const zn::String& text) {
  if (!text.isEmpty()) ++complaints;
}
