#include "foundation/SafePointer.h"

#include "foundation/function.h"
#include "platform/Gpio.h"
#include "support/LogCapture.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>

namespace {

/// Counts its living objects.
class Animal {
public:
    Animal() { ++s_Alive; }
    Animal(const Animal&) = delete;
    virtual ~Animal() { --s_Alive; }

    static int s_Alive;
};
int Animal::s_Alive = 0;

class Dog : public Animal {};
class Cat : public Animal {};

/// Sees and bends the two fields of a pointer.
template <typename T> class Probe : public SafePointer<T> {
public:
    using SafePointer<T>::SafePointer;
    using SafePointer<T>::operator=;

    ref_count*& record() { return this->m_RefCount; }
    T*& pointer() { return this->m_Pointer; }
    int count() { return this->m_RefCount->getCount(); }
};

const std::string REPORT = "SafePointer Report:";
// How the reports of pointers to these begin.
const std::string ANIMAL = REPORT + typeid(Animal).name();
const std::string DOG = REPORT + typeid(Dog).name();

/// The action must raise this text, and print and log it if it is a report.
void expectError(const std::string& text, const std::function<void()>& action) {
    const bool isReport = text.find(REPORT) == 0;
    std::string raised;
    LogCapture log;
    testing::internal::CaptureStdout();
    try {
        action();
    } catch (const XQRuntimeError& error) {
        raised = error.what();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), isReport ? text + "\n" : "");
    EXPECT_EQ(raised, text);
    log.expect(isReport ? 1 : 0, {isReport ? "SafePointer: " + text.substr(REPORT.size()) : ""});
}

TEST(SafePointer, DeletesWithTheLastHolder) {
    Probe<Animal> first(new Dog);
    {
        const SafePointer<Animal> second(first);
        SafePointer<Animal> third;
        third = second;
        EXPECT_EQ(first.count(), 3);
        third = *&third;
        EXPECT_EQ(first.count(), 3);
        first = SafePointer<Animal>(new Cat);
        EXPECT_EQ(Animal::s_Alive, 2);
    }
    EXPECT_EQ(Animal::s_Alive, 1);
    first.dec_reference();
    EXPECT_EQ(Animal::s_Alive, 0);
    first.dec_reference(); // empty by now
    SafePointer<Animal> empty;
    empty = *&empty;
}

TEST(SafePointer, ReportsMisuseOfEmptyPointers) {
    Animal* const nothing = nullptr;
    const SafePointer<Animal> empty;
    const SafePointer<Dog> emptyDog;
    Probe<Animal> target(new Animal);
    Probe<Animal> sharer(target);

    expectError(ANIMAL + " Use NULL pointer ->", [&] { empty.operator->(); });
    expectError(ANIMAL + " Use NULL pointer *", [&] { *empty; });
    expectError(ANIMAL + " Construct from NULL original pointer",
                [&] { SafePointer<Animal> made(nothing); });
    expectError(ANIMAL + " Construct from NULL <T>pointer",
                [&] { SafePointer<Animal> made(empty); });
    expectError(ANIMAL + " Construct from NULL <U>pointer",
                [&] { SafePointer<Animal> made(emptyDog); });
    expectError(ANIMAL + " Assigned NULL <T>pointer", [&] { target = empty; });
    expectError(ANIMAL + " dynamic pointer cast NULL pointer",
                [&] { dynamic_pointer_cast<Dog>(empty); });
    EXPECT_EQ(target.count(), 2) << "a refused assignment leaves the target as it was";
}

TEST(SafePointer, ReportsSourcesThatAreGone) {
    Probe<Dog> dog(new Dog);
    ref_count* const record = dog.record();

    dog.record() = nullptr;
    expectError(DOG + " Already destructed 1", [&] { SafePointer<Dog> made(dog); });
    dog.record() = record;

    Probe<Dog> retired(new Dog);
    Dog* const kept = retired.pointer();
    retired.record()->lock();
    RefCountManager::getInstance()->returnbackRefCount(retired.record(), "");
    retired.record()->unLock();
    expectError(DOG + " Already destructed 2", [&] { SafePointer<Animal> made(retired); });
    expectError("not valid pointer in dec_reference", [&] { retired.dec_reference(); });
    delete kept;

    record->dec_reference();
    SafePointer<Dog> target(new Dog);
    expectError(DOG + " Already destructed 3", [&] { target = dog; });
    EXPECT_TRUE(target.isNull()) << "the old object was released, the new one never taken";
    expectError(DOG + " Already destructed 3", [&] { dynamic_pointer_cast<Dog>(dog); });
    EXPECT_EQ(record->lock(), 0) << "every error releases the record first";
    record->unLock();
    record->inc_reference();
    EXPECT_EQ(record->getCount(), 0) << "a dead count stays dead";
    delete dog.pointer();
    dog.pointer() = nullptr;
}

TEST(SafePointer, NoticesARecordOfAnotherObject) {
    Probe<Animal> one(new Animal);
    Probe<Animal> other(new Animal);
    std::swap(one.record(), other.record());
    expectError("not valid pointer in inc_reference ", [&] { SafePointer<Animal> made(one); });
    EXPECT_EQ(one.count(), 1);
    EXPECT_EQ(one.record()->lock(), 0);
    one.record()->unLock();
    std::swap(one.record(), other.record());

    auto* const wrong = new Probe<Animal>(one);
    wrong->record() = other.record();
    expectError("not valid pointer in dec_reference", [&] { delete wrong; });
    one.record()->dec_reference(); // the reference that `wrong` could not give back
    EXPECT_EQ(Animal::s_Alive, 2);
}

TEST(SafePointer, EndsAReleaseThatRaises) {
    struct Raising {
        ~Raising() noexcept(false) { throw XQRuntimeError("going"); }
    };
    SafePointer<Raising> raising(new Raising);
    expectError("going", [&] { raising.dec_reference(); });
    EXPECT_TRUE(raising.isNull());
}

TEST(SafePointer, CastsByTheObjectsType) {
    Probe<Animal> animal(new Dog);
    {
        const SafePointer<Dog> dog = dynamic_pointer_cast<Dog>(animal);
        EXPECT_EQ(animal.count(), 2);
    }
    const std::string types =
        std::string(typeid(Animal).name()) + "),dest type is(" + typeid(Cat).name();
    expectError("can't dynmic_cast!,src type is(" + types + ")",
                [&] { dynamic_pointer_cast<Cat>(animal); });
    EXPECT_EQ(animal.count(), 1);
}

TEST(SafePointer, ReportsTypesByTheNameTheyHaveInTheSource) {
    using Nested = std::map<IOInfo, SafePointer<IGPIO>>;
    const SafePointer<IGPIO> gpio;
    const SafePointer<Nested> nested;
    expectError(REPORT + "5IGPIO Use NULL pointer ->", [&] { gpio.operator->(); });
    expectError(REPORT + "St3mapI6IOInfo11SafePointerI5IGPIOESt4lessIS0_ESaISt4pairIKS0_S3_EEE "
                         "Use NULL pointer ->",
                [&] { nested.operator->(); });
}

TEST(SafePointer, IsComparedAndAskedAsOtherPointersAre) {
    const SafePointer<Dog> dog(new Dog);
    const SafePointer<Animal> same(dog);
    const SafePointer<Animal> other(new Cat);
    const SafePointer<Animal> empty;
    EXPECT_EQ(&*dog, dog.get());
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_TRUE(same == dog && !(same != dog) && !(same == other) && other != dog);
    EXPECT_TRUE(dog && !empty && dog != nullptr && nullptr != dog);
    EXPECT_TRUE(empty == nullptr && nullptr == empty && empty == SafePointer<Dog>());
    EXPECT_FALSE(dog == nullptr || empty != nullptr || dog < same || same < dog);
    EXPECT_NE(dog < other, other < dog);
    static_assert(!std::is_convertible_v<SafePointer<Dog>, bool>, "nor is it a number");
    std::map<SafePointer<Animal>, int> ages{{same, 3}, {other, 4}};
    EXPECT_EQ(ages[dog], 3);
}

int seven() { return 7; }

TEST(function, CopiesShareOneCallable) {
    struct Counter {
        int next() { return ++m_Value; }
        int m_Value = 0;
    } counter;
    const std::size_t before = AllocationLedger::outstanding().size();
    const function<int> plain(seven);
    const function<int> bound(&Counter::next, &counter);
    const function<int> copy(bound); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(AllocationLedger::outstanding().size(), before + 2);
    EXPECT_EQ(plain(), 7);
    EXPECT_EQ(bound(), 1);
    EXPECT_EQ(copy(), 2);
}

} // namespace
