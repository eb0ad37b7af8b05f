// Rules about buffers whose literal does not match the declared count or type.
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <vsa/foundation/decompress.h>
#include <vsa/values/value_types.h>
#include "tools/vsa/check/rules/walk/statement_rule.h"
#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::ElementType;

// The limits for reporting a buffer that is far larger than its literal: the factor between both
// sizes, and the minimum size of the buffer in bytes. Both must be exceeded.
constexpr std::uint64_t FAR_LARGER = 1024;
constexpr std::uint64_t MIN_DECLARED_BYTES = 1 << 20;

// The maximum size of a buffer whose compressed data is expanded. The reader has expanded it, too,
// and the memory of a check is limited.
constexpr std::uint64_t MAX_EXPANDED_BYTES = 1 << 26;

std::optional<std::uint64_t> countIn(std::string_view brackets) {
  std::uint64_t count = 0;
  const std::size_t digits = brackets.find_first_of("0123456789");
  if (digits == std::string_view::npos) return std::nullopt;
  const char* const end = brackets.data() + brackets.size();
  const auto [behind, error] = std::from_chars(brackets.data() + digits, end, count);
  return error == std::errc() ? std::optional(count) : std::nullopt;
}

std::string countWithUnit(std::uint64_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

/// A buffer literal, `TYPE[COUNT] {LIST}`.
struct BufferLiteral {
  std::string_view keyword;
  std::string_view brackets;
  std::string_view list;
  ElementType type = ElementType::Null;
  std::uint64_t count = 0;
};

class BufferRules final : public StatementRule {
 public:
  explicit BufferRules(RuleFindings& found) : StatementRule(BUFFER), found_(found) {}

  void visit(const StatementView& view) override {
    const vsa::StatementOutline& statement = view.statement;
    BufferLiteral literal{statement.word, statement.brackets, statement.list};
    literal.type = elementTypeOf(literal.keyword);
    const std::optional<std::uint64_t> count = countIn(literal.brackets);
    if (literal.type == ElementType::Null || !count || *count == 0) return;
    literal.count = *count;
    const std::size_t content = literal.list.find_first_not_of(" \t\r\n\v\f", 1);
    const bool hasPeriod = literal.list.substr(content).starts_with('.');
    const bool isOfBytes = zn::korvo_sdk::componentBytes(literal.type) == 1;
    if (hasPeriod && isOfBytes) {
      checkCompressed(literal, content);
    } else {
      if (hasPeriod) checkDigits(literal, content);
      checkDeclared(literal);
    }
  }

 private:
  void checkCompressed(const BufferLiteral& literal, std::size_t content) {
    const std::uint64_t elementBytes = zn::korvo_sdk::elementBytes(literal.type);
    const std::uint64_t wanted = literal.count * elementBytes;
    const bool isLarge = literal.count > MAX_EXPANDED_BYTES / elementBytes;
    if (!found_.isEnabled(RuleId::ShortCompressedData) || isLarge) return;
    const std::string_view text = literal.list;
    zn::String error;
    const auto [bytes, size] =
        zn::decompress(reinterpret_cast<const unsigned char*>(text.data() + content),
                       text.size() - 1 - content, error, wanted);
    const std::unique_ptr<unsigned char[]> owner(bytes);
    if (bytes == nullptr || size == wanted) return;
    const std::uint64_t whole = size / elementBytes;
    Finding& finding =
        found_.add(RuleId::ShortCompressedData, found_.rangeOf(literal.brackets),
                   "the compressed data has " + countWithUnit(whole, "element") + ", and " +
                       countWithUnit(literal.count, "element") + " are declared; the rest is zero");
    const bool isByteCount = literal.count == size && elementBytes > 1;
    finding.hint = isByteCount
                       ? "the count is that of elements, and this is that of bytes: write `[" +
                             std::to_string(whole) + "]`"
                       : "write the count of the data, `[" + std::to_string(whole) + "]`";
  }

  // Checks the digits after a period if the type cannot be compressed. A number with at least 20
  // characters there is probably compressed data.
  void checkDigits(const BufferLiteral& literal, std::size_t content) {
    const std::string_view digits = literal.list.substr(content + 1);
    const std::size_t end = digits.find_first_of(" \t\r\n\v\f,}");
    if (end < 20 || !found_.isEnabled(RuleId::CompressedDataAsNumber)) return;
    found_
        .add(RuleId::CompressedDataAsNumber, found_.rangeOf(literal.list),
             "a " + std::string(literal.keyword) +
                 " cannot be compressed; this is read as one number below 1")
        .hint = "compressed data is for types of single bytes, such as `byte` and `rgba8`";
  }

  void checkDeclared(const BufferLiteral& literal) {
    const std::uint64_t elementBytes = zn::korvo_sdk::elementBytes(literal.type);
    const std::uint64_t written = literal.list.size();
    const bool isLarge = literal.count > MIN_DECLARED_BYTES / elementBytes &&
                         literal.count / FAR_LARGER > written / elementBytes;
    if (!isLarge || !found_.isEnabled(RuleId::LargeDeclaredCount)) return;
    found_
        .add(RuleId::LargeDeclaredCount, found_.rangeOf(literal.brackets),
             "this declares " + countWithUnit(literal.count, "element") + " of " +
                 countWithUnit(elementBytes, "byte") + ", far more than is written")
        .hint = "write the count of the elements in the list";
  }

  RuleFindings& found_;
};

}  // namespace

StatementRulePointer bufferRules(const TextRuleInput&, RuleFindings& found) {
  if (!found.isAnyEnabled({RuleId::ShortCompressedData, RuleId::CompressedDataAsNumber,
                           RuleId::LargeDeclaredCount})) {
    return nullptr;
  }
  return std::make_unique<BufferRules>(found);
}

}  // namespace vsa_tools
