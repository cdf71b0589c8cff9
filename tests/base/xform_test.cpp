// Transforms of the plane.
#include <base/exception.h>
#include <base/xform.h>

#include <gtest/gtest.h>

namespace {

const mvXform<2> kA(mvMatrix<2>(1, 2, 3, 4), mvVector<2>(5, 6));
const mvXform<2> kB(mvMatrix<2>(0, -1, 2, 0), mvVector<2>(-7, 8));
const mvVector<2> kV(9, 10);

TEST(Xform, IsTheIdentityByDefault) {
    const mvXform<2> identity;
    EXPECT_EQ(identity.matrix(), mvMatrix<2>());
    EXPECT_EQ(identity.trans(), mvVector<2>());
    EXPECT_EQ(identity * kV, kV);
}

TEST(Xform, TurnsThenMoves) {
    EXPECT_EQ(kA * kV, mvVector<2>(1 * 9 + 2 * 10 + 5, 27 + 40 + 6));
}

TEST(Xform, ProductGoesThroughTheRightFactorFirst) {
    EXPECT_EQ((kA * kB) * kV, kA * (kB * kV));
    EXPECT_NE(kA * kB, kB * kA);
}

TEST(Xform, IsUndoneByItsInverse) {
    const mvVector<2> there = kB * kV;
    EXPECT_EQ(kB.inverse() * there, kV);
    EXPECT_EQ(kB * kB.inverse(), mvXform<2>());
    EXPECT_THROW(mvXform<2>(mvMatrix<2>(1, 1, 1, 1), kV).inverse(), mvException);
}

TEST(Xform, ComparesMatrixAndTranslation) {
    EXPECT_EQ(kA, mvXform<2>(kA.matrix(), kA.trans()));
    EXPECT_NE(kA, mvXform<2>(kA.matrix(), kB.trans()));
    EXPECT_NE(kA, mvXform<2>(kB.matrix(), kA.trans()));
}

TEST(XformLinear, HoldsATransform) {
    EXPECT_EQ(mv2XformLinear().xform(), mvXform<2>());
    EXPECT_EQ(mv2XformLinear(kA).xform(), kA);
    EXPECT_EQ(mv2XformLinear(kA.matrix(), kA.trans()), mv2XformLinear(kA));
    EXPECT_EQ((mv2XformLinear(kA) * mv2XformLinear(kB)).xform(), kA * kB);
    EXPECT_NE(mv2XformLinear(kA), mv2XformLinear(kB));
}

TEST(XformCache, HoldsNoneByDefault) {
    const mv2XformCache none;
    EXPECT_FALSE(none.isSet());
    EXPECT_EQ(none.linearXform().xform(), mvXform<2>());
}

TEST(XformCache, HoldsWhatItIsGiven) {
    mv2XformCache cache;
    cache.xform(kA);
    EXPECT_TRUE(cache.isSet());
    EXPECT_EQ(cache.linearXform().xform(), kA);
    cache.setIdentity();
    EXPECT_TRUE(cache.isSet());
    EXPECT_EQ(cache.linearXform().xform(), mvXform<2>());
}

TEST(XformCache, TellsNoneFromTheIdentity) {
    mv2XformCache identity, other;
    identity.setIdentity();
    EXPECT_NE(identity, mv2XformCache());
    EXPECT_EQ(mv2XformCache(), mv2XformCache());
    other.xform(kA);
    EXPECT_NE(identity, other);
    other.setIdentity();
    EXPECT_EQ(identity, other);
}

}  // namespace
