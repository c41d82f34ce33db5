#include "vyncore/utility/RefCountedObject.h"

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

namespace {

struct INamed : virtual vyncore::utility::RefCountedInterface {};

struct Counted : vyncore::utility::RefCountedObject, INamed {
    explicit Counted(bool& destroyed) : mDestroyed(destroyed) {}
    Counted(Counted const&) = default;
    ~Counted() override { mDestroyed = true; }
    bool& mDestroyed;
};

TEST(RefCountedObjectTest, HasOneCountHoweverItIsReached) {
    bool destroyed = false;
    boost::intrusive_ptr<Counted> object(new Counted(destroyed));
    boost::intrusive_ptr<INamed> named(object);
    EXPECT_EQ(object->GetReferenceCount(), 2);
    EXPECT_EQ(Counted(*object).GetReferenceCount(), 0);
    destroyed = false;
    object.reset();
    EXPECT_FALSE(destroyed);
    named.reset();
    EXPECT_TRUE(destroyed);
}

} // namespace
