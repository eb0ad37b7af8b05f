// The candidate of Coin. It reads Open Inventor ASCII from memory.
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>

#include <stdexcept>

#include "bench/peers/peers.h"

namespace bench {
namespace {

SoSeparator* readAll(const std::string& text) {
  SoInput input;
  input.setBuffer(text.data(), text.size());
  SoSeparator* const root = SoDB::readAll(&input);
  if (root) root->ref();
  return root;
}

}  // namespace

Candidate coinReader(const Text& iv) {
  SoDB::init();
  SoSeparator* const root = readAll(iv.text);
  if (!root) throw std::runtime_error("Coin: cannot read the scene");
  requireCount("Coin", "nodes", static_cast<size_t>(root->getNumChildren()), iv.expected.nodes);
  root->unref();
  return {"Coin .iv", [&iv] {
            const Stopwatch watch;
            SoSeparator* const fresh = readAll(iv.text);
            const double seconds = watch.seconds();
            fresh->unref();
            return seconds;
          }};
}

}  // namespace bench
