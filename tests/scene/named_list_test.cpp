// Tests of the list of named objects, with and without an index.
#include "scene/model/storage/named_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <string>

#include <vsa/foundation/string.h>

namespace zn::korvo_sdk {
namespace {

struct NamedThing {
  String text;

  const String& name() const { return text; }
  bool isNamed(const String& other, std::uint64_t) const { return text == other; }
};

// A list of up to eight objects has no index.
TEST(NamedList, CanBeFilledAgainAfterClear) {
  for (const int count : {1, 8, 9, 1000}) {
    SmallBlockPool pool;
    NamedList<NamedThing> list;
    std::deque<NamedThing> things;
    for (int round = 0; round < 2; ++round) {
      for (int i = 0; i < count; ++i) {
        things.push_back({String::copyOf("t" + std::to_string(i))});
        list.append(&things.back(), pool);
        EXPECT_EQ(list.find(things.back().text), &things.back());
      }
      EXPECT_EQ(list.count(), static_cast<std::uint64_t>(count));
      list.clear(pool);
      EXPECT_EQ(list.count(), 0U);
      EXPECT_EQ(list.find(String("t0")), nullptr);
    }
  }
}

}  // namespace
}  // namespace zn::korvo_sdk
