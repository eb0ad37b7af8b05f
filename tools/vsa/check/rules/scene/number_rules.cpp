// The rule about infinities and NaNs.
#include <cmath>
#include <memory>
#include <string>

#include "tools/vsa/check/rules/scene/scene_rules.h"

namespace vsa_tools {

namespace {

using vsa::InputView;
using vsa::ValueType;

const char* nameOf(double number) {
  return std::isnan(number) ? "not a number" : "infinite";
}

void add(SceneFindings& found, const InputView& input, double number, const std::string& where) {
  found.add({RuleId::NotFinite, input.path(), where + " is " + nameOf(number),
             "few programs can draw that; check the exporter's division or transform"});
}

// Adds a finding for the first number of the buffer that is not finite.
template <class T>
void checkBuffer(SceneFindings& found, const InputView& input, const unsigned char* data,
                 std::size_t bytes) {
  const T* const numbers = reinterpret_cast<const T*>(data);
  const std::size_t count = bytes / sizeof(T);
  // The sum is 0 if all numbers are finite. An infinity or NaN times 0 is NaN, which is not equal
  // to 0. This loop has no branch for each number. The second loop runs only if there is a finding.
  T sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum += numbers[i] * T{0};
  if (sum == T{0}) return;
  for (std::size_t i = 0; i < count; ++i) {
    if (std::isfinite(numbers[i])) continue;
    add(found, input, static_cast<double>(numbers[i]), "number " + std::to_string(i));
    return;
  }
}

void checkBuffer(SceneFindings& found, const InputView& input) {
  const vsa::BufferView buffer = input.buffer();
  const auto bytes = buffer.bytes();
  const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
  // Buffers of single numbers are not checked, because NaN often represents a missing number there.
  if (zn::korvo_sdk::componentCount(buffer.elementType()) < 2) return;
  const vsa::ElementType component = zn::korvo_sdk::componentType(buffer.elementType());
  if (component == vsa::ElementType::Float) checkBuffer<float>(found, input, data, bytes.size());
  if (component == vsa::ElementType::Double) checkBuffer<double>(found, input, data, bytes.size());
}

class NumberRules final : public InputRule {
 public:
  explicit NumberRules(SceneFindings& found) : found_(found) {}

  void visit(const vsa::NodeView&, const InputView& input, ValueType type) override {
    if (type == ValueType::Real) {
      const double real = *input.real();
      if (!std::isfinite(real)) add(found_, input, real, "this value");
    } else if (type == ValueType::Buffer) {
      checkBuffer(found_, input);
    } else {
      checkComponents(input);
    }
  }

 private:
  void checkComponents(const InputView& input) {
    for (const double component : input.components()) {
      if (std::isfinite(component)) continue;
      add(found_, input, component, "a component");
      return;
    }
  }

  SceneFindings& found_;
};

}  // namespace

InputRulePointer numberRules(SceneFindings& found) {
  if (!found.isEnabled(RuleId::NotFinite)) return nullptr;
  return std::make_unique<NumberRules>(found);
}

}  // namespace vsa_tools
