// Tests that each scene interface has exactly the virtual functions that are listed here, in this
// order. A compiled host calls a function by its position in the virtual table. Therefore a host
// that was compiled with an older header works as long as the list is the same.
#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <initializer_list>

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::interfaces {
namespace {

/// A pointer to a virtual member function in the Itanium C++ ABI. `slot` is the byte offset of the
/// function in the virtual table, plus 1 on most processors.
struct VirtualPointer {
  std::ptrdiff_t slot;
  std::ptrdiff_t adjustment;
};

template <class Function>
std::ptrdiff_t slotOf(Function function) {
  static_assert(sizeof(Function) == sizeof(VirtualPointer));
  return std::bit_cast<VirtualPointer>(function).slot /
         static_cast<std::ptrdiff_t>(sizeof(void (*)()));
}

/// Adds a virtual function after those of an interface. The slot of that function is the number of
/// the interface's functions.
template <class Interface>
struct Extended : Interface {
  virtual void next() = 0;

 protected:
  ~Extended() = default;
};

template <class Interface>
void expectOrder(std::initializer_list<std::ptrdiff_t> slots) {
  std::ptrdiff_t expected = 0;
  for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot, expected++);
  EXPECT_EQ(slotOf(&Extended<Interface>::next), expected) << "operations that are not listed here";
}

TEST(InterfaceOrder, Scene) {
  expectOrder<IScene>({slotOf(&IScene::findNode), slotOf(&IScene::createNode),
                       slotOf(&IScene::defineNode), slotOf(&IScene::removeNode),
                       slotOf(&IScene::setFileVersion), slotOf(&IScene::setFileTime),
                       slotOf(&IScene::pushFileComment), slotOf(&IScene::clearComments)});
}

TEST(InterfaceOrder, Node) {
  expectOrder<INode>({slotOf(&INode::name), slotOf(&INode::type), slotOf(&INode::hasInput),
                      slotOf(&INode::input), slotOf(&INode::createInput),
                      slotOf(&INode::createArray), slotOf(&INode::output)});
}

TEST(InterfaceOrder, Input) {
  expectOrder<IInput>(
      {slotOf(&IInput::type), slotOf(&IInput::typeName), slotOf(&IInput::path),
       slotOf(&IInput::holdsBuffer), slotOf(&IInput::enumValues), slotOf(&IInput::elementType),
       slotOf(&IInput::bufferType), slotOf(&IInput::appendElement), slotOf(&IInput::isArray),
       slotOf(&IInput::refusesValues),
       // Functions for members and elements.
       slotOf(&IInput::createInput), slotOf(&IInput::createArray), slotOf(&IInput::hasInput),
       slotOf(&IInput::count), slotOf(&IInput::element), slotOf(&IInput::input),
       // Functions for values.
       slotOf(&IInput::set), slotOf(&IInput::assign),
       // Functions for links.
       slotOf(&IInput::connect), slotOf(&IInput::disconnect), slotOf(&IInput::setNode),
       slotOf(&IInput::retain), slotOf(&IInput::release)});
}

TEST(InterfaceOrder, Enumeration) {
  expectOrder<IEnumeration>({slotOf(&IEnumeration::isEmpty), slotOf(&IEnumeration::find)});
}

TEST(InterfaceOrder, AnOutputHasNoOperations) {
  expectOrder<IOutput>({});
}

}  // namespace
}  // namespace zn::korvo_sdk::interfaces
