// Transforms of the plane.
#include <base/exception.h>
#include <base/xform.h>

#include <gtest/gtest.h>

namespace {

const mvXform<2> a(mvMatrix<2>(1, 2, 3, 4), mvVector<2>(5, 6));
const mvXform<2> b(mvMatrix<2>(0, -1, 2, 0), mvVector<2>(-7, 8));
const mvVector<2> v(9, 10);

TEST(Xform, IsTheIdentityByDefault) {
    const mvXform<2> identity;
    EXPECT_EQ(identity.matrix(), mvMatrix<2>());
    EXPECT_EQ(identity.trans(), mvVector<2>());
    EXPECT_EQ(identity * v, v);
}

TEST(Xform, TurnsThenMoves) {
    EXPECT_EQ(a * v, mvVector<2>(1 * 9 + 2 * 10 + 5, 27 + 40 + 6));
}

TEST(Xform, ProductGoesThroughTheRightFactorFirst) {
    EXPECT_EQ((a * b) * v, a * (b * v));
    EXPECT_NE(a * b, b * a);
}

TEST(Xform, IsUndoneByItsInverse) {
    const mvVector<2> there = b * v;
    EXPECT_EQ(b.inverse() * there, v);
    EXPECT_EQ(b * b.inverse(), mvXform<2>());
    EXPECT_THROW(mvXform<2>(mvMatrix<2>(1, 1, 1, 1), v).inverse(), mvException);
}

TEST(Xform, ComparesMatrixAndTranslation) {
    EXPECT_EQ(a, mvXform<2>(a.matrix(), a.trans()));
    EXPECT_NE(a, mvXform<2>(a.matrix(), b.trans()));
    EXPECT_NE(a, mvXform<2>(b.matrix(), a.trans()));
}

TEST(XformLinear, HoldsATransform) {
    EXPECT_EQ(mv2XformLinear().xform(), mvXform<2>());
    EXPECT_EQ(mv2XformLinear(a).xform(), a);
    EXPECT_EQ(mv2XformLinear(a.matrix(), a.trans()), mv2XformLinear(a));
    EXPECT_EQ((mv2XformLinear(a) * mv2XformLinear(b)).xform(), a * b);
    EXPECT_NE(mv2XformLinear(a), mv2XformLinear(b));
}

TEST(XformCache, HoldsNoneByDefault) {
    const mv2XformCache none;
    EXPECT_FALSE(none.isSet());
    EXPECT_EQ(none.linearXform().xform(), mvXform<2>());
}

TEST(XformCache, HoldsWhatItIsGiven) {
    mv2XformCache cache;
    cache.xform(a);
    EXPECT_TRUE(cache.isSet());
    EXPECT_EQ(cache.linearXform().xform(), a);
    cache.setIdentity();
    EXPECT_TRUE(cache.isSet());
    EXPECT_EQ(cache.linearXform().xform(), mvXform<2>());
}

TEST(XformCache, TellsNoneFromTheIdentity) {
    mv2XformCache identity, other;
    identity.setIdentity();
    EXPECT_NE(identity, mv2XformCache());
    EXPECT_EQ(mv2XformCache(), mv2XformCache());
    other.xform(a);
    EXPECT_NE(identity, other);
    other.setIdentity();
    EXPECT_EQ(identity, other);
}

}  // namespace
