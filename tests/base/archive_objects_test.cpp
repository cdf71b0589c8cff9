// Objects in archives: identity, sharing, references and hostile bytes.
#include <base/archive.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/threads.h"
#include "support/value_bytes.h"

namespace graph {

// A number and the owner of the next node.
class Node : public mvPersistent {
  public:
    explicit Node(long number = 0) : value(number) { ++alive; }
    ~Node() override { --alive; }
    static mvPersistent* make() { return new Node; }

    long value;
    std::unique_ptr<Node> next;

    static int alive;

  protected:
    void dispatchSerialize(mvArchive& ar) override {
        if (haveVisited(ar, this, sizeof(Node))) return;
        if (ar.isStoring()) {
            Node* pointer = next.get();
            ar || pointer;
        } else {
            next = mfLoad<Node>(ar);
        }
        ar || value;
        setVisited(ar, this, sizeof(Node));
    }
};
int Node::alive = 0;

// Points at anything and owns nothing.
class Link : public mvPersistent {
  public:
    static mvPersistent* make() { return new Link; }
    mvPersistent* target = nullptr;

  protected:
    void dispatchSerialize(mvArchive& ar) override {
        if (haveVisited(ar, this, sizeof(Link))) return;
        ar || target;
        setVisited(ar, this, sizeof(Link));
    }
};

// Two parts of one object, the persistent one a virtual base.
class Tool : public virtual mvPersistent, public virtual mvRepBase {
  public:
    unsigned char size = 0;

  protected:
    void dispatchSerialize(mvArchive& ar) override {
        if (haveVisited(ar, this, sizeof(Tool))) return;
        ar || size;
        setVisited(ar, this, sizeof(Tool));
    }
};

class Hammer : public Tool {
  public:
    static mvPersistent* make() { return new Hammer; }
    long weight = 0;
    double balance = 0;

  protected:
    void dispatchSerialize(mvArchive& ar) override {
        if (haveVisited(ar, this, sizeof(Hammer))) return;
        Tool::dispatchSerialize(ar);
        ar || weight;
        setVisited(ar, this, sizeof(Hammer));
    }
};

class Unregistered : public mvPersistent {};

}  // namespace graph

namespace {

using graph::Hammer;
using graph::Link;
using graph::Node;
using graph::Unregistered;
using namespace std::string_literals;

const mv_Instantiator kNodes(typeid(Node), &Node::make);
const mv_Instantiator kLinks(typeid(Link), &Link::make);
const mv_Instantiator kHammers(typeid(Hammer), &Hammer::make);

template <class T>
std::string storedPointer(T* object) {
    return storedBy([&](mvArchive& ar) { ar || object; });
}

std::unique_ptr<Node> chain(int length) {
    std::unique_ptr<Node> head;
    for (int i = 0; i < length; ++i) {
        auto node = std::make_unique<Node>(i);
        node->next = std::move(head);
        head = std::move(node);
    }
    return head;
}

const std::string kNewNode = "\1\x0b\0\0\0graph::Node"s;
const std::string kNewLink = "\1\x0b\0\0\0graph::Link"s;
const std::string kNull = "\0"s;

TEST(ArchiveObjects, AreWrittenOncePerArchive) {
    Node node(5);
    EXPECT_EQ(hex(storedBy([&](mvArchive& ar) { ar || node || node; })), "00 05 00 00 00");
}

TEST(ArchiveObjects, ThatAreConstAreStored) {
    Node node(5);
    const Node& constant = node;
    const Node* pointer = &node;
    const mvPersistent* base = &node;
    const auto bytes = storedBy([&](mvArchive& ar) { ar || node || node; });
    EXPECT_EQ(storedBy([&](mvArchive& ar) { ar || constant || node; }), bytes);
    EXPECT_EQ(storedBy([&](mvArchive& ar) { ar || pointer; }), storedPointer(&node));
    EXPECT_EQ(storedBy([&](mvArchive& ar) { ar || base; }), storedPointer(&node));
    EXPECT_EQ(storedBy([&](mvArchive& ar) { mfStore(ar, constant); }), storedPointer(&node));
}

TEST(ArchiveObjects, ThatAreConstAreNotLoaded) {
    const Node node(5);
    Loading loading("\6\0\0\0"s);
    EXPECT_THROW(loading.archive() || node, mvArchive::BadValue);
    EXPECT_THROW(mfStore(loading.archive(), node), mvArchive::BadValue);
    EXPECT_EQ(node.value, 5);
    EXPECT_EQ(loading.rest(), 4u);
}

TEST(ArchiveObjects, AreLoadedIntoPointersToConst) {
    Node node(5);
    const Node* loaded = nullptr;
    Loading(storedPointer(&node)).archive() || loaded;
    const std::unique_ptr<const Node> owner(loaded);
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(owner->value, 5);
}

TEST(ArchiveObjects, AreReadOncePerArchive) {
    Node node;
    Loading loading("\0\5\0\0\0\0\6\0\0\0"s);
    loading.archive() || node || node;
    EXPECT_EQ(node.value, 5);
    EXPECT_EQ(loading.rest(), 5u);
}

TEST(ArchiveObjects, AreReadAnewAsAWholeAfterAFailure) {
    std::istringstream in("\3\4\0"s);
    mvArchive ar(in);
    Hammer hammer;
    EXPECT_THROW(ar || hammer, mvArchive::Truncated);
    in.clear();
    in.str("\5\6\0\0\0"s);
    ar || hammer;
    EXPECT_EQ(hammer.size, 5);
    EXPECT_EQ(hammer.weight, 6);
}

TEST(ArchiveObjects, WithVirtualBasesAreOneObject) {
    Hammer hammer;
    hammer.size = 3;
    hammer.weight = 4;
    graph::Tool& tool = hammer;
    const std::string bytes = storedBy(
        [&](mvArchive& ar) { ar || hammer || tool || static_cast<mvPersistent&>(hammer); });
    EXPECT_EQ(hex(bytes), "03 04 00 00 00");
    const std::unique_ptr<Hammer> loaded =
        mfLoad<Hammer>(Loading(storedPointer(&hammer)).archive());
    EXPECT_EQ(loaded->size, 3);
    EXPECT_EQ(loaded->weight, 4);
}

TEST(ArchiveObjects, AtTheAddressOfADestroyedOneAreNew) {
    std::optional<Node> slot;
    const std::string bytes = storedBy([&](mvArchive& ar) {
        const Node* former = &slot.emplace(1);
        ar || *slot;
        ASSERT_EQ(&slot.emplace(2), former);
        ar || *slot;
        Node* pointer = &slot.emplace(3);
        ar || pointer;
    });
    EXPECT_EQ(bytes, "\0\1\0\0\0"s + "\0\2\0\0\0"s + kNewNode + "\0\3\0\0\0"s);
    Loading loading(bytes);
    for (const long expected : {1, 2}) {
        loading.archive() || slot.emplace(0);
        EXPECT_EQ(slot->value, expected);
    }
    EXPECT_EQ(mfLoad<Node>(loading.archive())->value, 3);
}

TEST(ArchivePointer, HasTheDocumentedBytes) {
    Node node(5);
    mvPersistent* pointer = &node;
    mvPersistent* none = nullptr;
    EXPECT_EQ(storedBy([&](mvArchive& ar) { ar || none || pointer || pointer; }),
              kNull + kNewNode + "\0\5\0\0\0"s + "\2\0\0\0\0"s);
}

TEST(ArchivePointer, RefersToObjectsInTheOrderInWhichTheArchiveMetThem) {
    Node first, second, third;
    mvPersistent* pointers[] = {&third, &second, &first};
    EXPECT_EQ(
        storedBy([&](mvArchive& ar) {
            ar || first || second || first;
            for (mvPersistent*& pointer : pointers) ar || pointer;
        }),
        "\0\0\0\0\0"s + "\0\0\0\0\0"s + kNewNode + "\0\0\0\0\0"s + "\2\1\0\0\0"s + "\2\0\0\0\0"s);
}

TEST(ArchivePointer, LoadsSharedObjectsOnce) {
    Node node(5);
    mvPersistent* pointer = &node;
    Loading loading(storedBy([&](mvArchive& ar) { ar || pointer || pointer; }));
    mvPersistent *first = nullptr, *second = nullptr;
    loading.archive() || first || second;
    const std::unique_ptr<mvPersistent> owner(first);
    EXPECT_EQ(first, second);
    EXPECT_EQ(dynamic_cast<Node&>(*first).value, 5);
}

TEST(ArchivePointer, LoadsAReferenceToAnObjectLoadedInPlace) {
    Node node(5), loaded;
    Node* pointer = &node;
    Loading loading(storedBy([&](mvArchive& ar) { ar || node || pointer; }));
    Node* reference = nullptr;
    loading.archive() || loaded || reference;
    EXPECT_EQ(reference, &loaded);
}

TEST(ArchivePointer, LoadsCircles) {
    Link a, b;
    a.target = &b;
    b.target = &a;
    const std::string bytes = storedPointer(&a);
    EXPECT_EQ(bytes, kNewLink + kNewLink + "\2\0\0\0\0"s);
    const std::unique_ptr<Link> first = mfLoad<Link>(Loading(bytes).archive());
    const std::unique_ptr<mvPersistent> second(first->target);
    EXPECT_EQ(dynamic_cast<Link&>(*second).target, first.get());
}

TEST(ArchivePointer, RefusesAReferenceToAnObjectThatIsGone) {
    Node node;
    Node* pointer = &node;
    const std::string bytes = storedBy([&](mvArchive& ar) { ar || pointer || pointer; });
    Loading loading(bytes);
    mfLoad<Node>(loading.archive()).reset();
    Node* reference = &node;
    EXPECT_THROW(loading.archive() || reference, mvArchive::BadValue);
    EXPECT_EQ(reference, &node);
}

TEST(ArchivePointer, DoesNotTakeANewObjectForAGoneOneAtItsAddress) {
    std::optional<Node> slot;
    Loading loading("\0\5\0\0\0"s + "\2\0\0\0\0"s);
    loading.archive() || slot.emplace();
    slot.emplace();
    mvPersistent* reference = nullptr;
    EXPECT_THROW(loading.archive() || reference, mvArchive::BadValue);
}

TEST(ArchivePointer, RefusesReferencesAndTagsThatStandForNothing) {
    for (const std::string& bytes : {"\2\0\0\0\0"s, "\2\xff\xff\xff\xff"s, "\3"s, "\xff"s}) {
        mvPersistent* pointer = nullptr;
        EXPECT_THROW(Loading(bytes).archive() || pointer, mvArchive::BadValue) << hex(bytes);
    }
}

TEST(ArchivePointer, OfAnUnregisteredClassIsRefusedBothWays) {
    Unregistered object;
    mvPersistent* pointer = &object;
    EXPECT_EQ(
        storedBy([&](mvArchive& ar) { EXPECT_THROW(ar || pointer, mvArchive::UnknownClass); }), "");
    for (const std::string& name : {"\x13\0\0\0graph::Unregistered"s, "\0\0\0\0"s}) {
        EXPECT_THROW(Loading("\1" + name).archive() || pointer, mvArchive::UnknownClass);
        EXPECT_EQ(pointer, &object);
    }
}

TEST(ArchivePointer, OfADerivedClassAcceptsThatClassOnly) {
    Node node(5);
    Link* link = nullptr;
    EXPECT_THROW(Loading(storedPointer(&node)).archive() || link, mvArchive::BadValue);
    EXPECT_EQ(link, nullptr);
    Node* loaded = nullptr;
    Loading(storedPointer(&node)).archive() || loaded;
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(std::unique_ptr<Node>(loaded)->value, 5);
    Loading(kNull).archive() || loaded;
    EXPECT_EQ(loaded, nullptr);
}

TEST(Load, GivesTheObjectOrNull) {
    Node node(5);
    EXPECT_EQ(mfLoad<Node>(Loading(storedPointer(&node)).archive())->value, 5);
    EXPECT_NE(mfLoad<mvPersistent>(Loading(storedPointer(&node)).archive()), nullptr);
    EXPECT_EQ(mfLoad<Node>(Loading(kNull).archive()), nullptr);
}

TEST(Load, RefusesAnObjectOfAnotherClass) {
    Node node(5);
    const int before = Node::alive;
    EXPECT_THROW(mfLoad<Link>(Loading(storedPointer(&node)).archive()), mvArchive::BadValue);
    EXPECT_EQ(Node::alive, before);
}

TEST(Load, RefusesAnObjectThatHasAnOwner) {
    Node node;
    Node* pointer = &node;
    Loading loading(storedBy([&](mvArchive& ar) { ar || pointer || pointer; }));
    const std::unique_ptr<Node> owner = mfLoad<Node>(loading.archive());
    EXPECT_THROW(mfLoad<Node>(loading.archive()), mvArchive::BadValue);
}

TEST(Load, NeedsAnArchiveOfItsMode) {
    std::ostringstream out;
    mvArchive storing(out);
    std::unique_ptr<mvPersistent> owner;
    EXPECT_THROW(storing.loadPointer(owner), mvArchive::BadValue);
    Node node;
    EXPECT_THROW(Loading(kNull).archive().storePointer(&node), mvArchive::BadValue);
    EXPECT_EQ(out.str(), "");
}

TEST(ArchiveObjects, LeaveNothingBehindWhenBytesEndEarly) {
    const std::unique_ptr<Node> original = chain(3);
    const std::string bytes = storedPointer(original.get());
    const int before = Node::alive;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_THROW(mfLoad<Node>(Loading(bytes.substr(0, size)).archive()), mvArchive::Truncated);
        EXPECT_EQ(Node::alive, before) << size;
    }
}

TEST(ArchiveObjects, SurviveEveryFlippedByte) {
    const std::unique_ptr<Node> original = chain(2);
    const std::string bytes = storedPointer(original.get());
    const int before = Node::alive;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const char flip : {'\1', '\2', '\3', '\x80', '\xff'}) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ flip);
            try {
                mfLoad<Node>(Loading(damaged).archive());
            } catch (const mvException&) {
            }
            EXPECT_EQ(Node::alive, before) << at;
        }
    }
}

TEST(ArchiveObjects, NestUpToTheLimit) {
    const std::unique_ptr<Node> original = chain(mvArchive::maxDepth);
    std::unique_ptr<Node> loaded = mfLoad<Node>(Loading(storedPointer(original.get())).archive());
    int length = 0;
    for (const Node* node = loaded.get(); node; node = node->next.get()) ++length;
    EXPECT_EQ(length, mvArchive::maxDepth);
}

TEST(ArchiveObjects, NestNoDeeperThanTheLimit) {
    const std::unique_ptr<Node> original = chain(mvArchive::maxDepth + 1);
    storedBy([&](mvArchive& ar) {
        Node* pointer = original.get();
        EXPECT_THROW(ar || pointer, mvArchive::BadValue);
    });
    std::string hostile;
    for (int i = 0; i < 100000; ++i) hostile += kNewNode;
    const int before = Node::alive;
    EXPECT_THROW(mfLoad<Node>(Loading(hostile).archive()), mvArchive::BadValue);
    EXPECT_EQ(Node::alive, before);
}

TEST(ArchiveObjects, MayNestAgainAfterAFailure) {
    std::string bytes;
    for (int i = 0; i < 300; ++i) bytes += kNewNode;
    bytes.resize(kNewNode.size() * (mvArchive::maxDepth + 1));
    std::istringstream in(bytes);
    mvArchive ar(in);
    EXPECT_THROW(mfLoad<Node>(ar), mvArchive::BadValue);
    in.clear();
    in.str(kNewNode + kNull + "\5\0\0\0"s);
    EXPECT_EQ(mfLoad<Node>(ar)->value, 5);
}

TEST(ArchiveObjects, MayBeStoredFromSeveralThreadsAtOnce) {
    if (!support::kHasThreads) GTEST_SKIP() << "no threads here";
    for (int round = 0; round < 20; ++round) {
        mvExceptionWithString shared("shared");
        std::vector<std::string> stored(4);
        std::vector<std::thread> threads;
        for (std::string& bytes : stored) {
            threads.emplace_back(
                [&] { bytes = storedBy([&](mvArchive& ar) { ar || shared || shared; }); });
        }
        for (std::thread& thread : threads) thread.join();
        for (const std::string& bytes : stored) EXPECT_EQ(bytes, "\1\6\0\0\0shared"s);
    }
}

}  // namespace
