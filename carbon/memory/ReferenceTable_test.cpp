// ReferenceTable: what it says is alive, against a plain set.
#include <memory/ReferenceTable.h>

#include <doctest/doctest.h>
#include <random>
#include <set>

using lampblack::memory::AddressSet;
using lampblack::memory::ReferenceTable;

TEST_CASE("AddressSet: agrees with a plain set through random insertions and erasures")
{
    std::mt19937 random(1);
    std::vector<char> addresses(500);
    AddressSet set;
    std::set<const void*> reference;
    for (int i = 0; i < 20000; ++i) {
        const void* address = &addresses[random() % addresses.size()];
        if (random() % 2) {
            set.Insert(address);
            reference.insert(address);
        } else {
            REQUIRE(set.Erase(address) == (reference.erase(address) > 0));
        }
    }
    CHECK(set.Count() == reference.size());
    for (const char& address : addresses)
        REQUIRE(set.Contains(&address) == (reference.count(&address) > 0));
}

namespace {

struct Counted {
    int* count;
    explicit Counted(int* inCount) : count(inCount) { ++*count; }
    ~Counted() { --*count; }
};

} // namespace

TEST_CASE("ReferenceTable: Delete ends a record once, and its address is not soon used again")
{
    int alive = 0;
    {
        ReferenceTable<Counted> table;
        Counted* first = table.New(&alive);
        CHECK(table.Find(first) == first);
        table.Delete(first);
        table.Delete(first);
        CHECK(alive == 0);
        CHECK(table.Find(first) == nullptr);
        for (int i = 0; i < 100; ++i)
            CHECK(table.New(&alive) != first);
        CHECK(table.Count() == 100);
    }
    CHECK(alive == 0);
}

TEST_CASE("ReferenceTable: storage of many records disposed of is used again in the end")
{
    int alive = 0;
    ReferenceTable<Counted> table;
    std::set<Counted*> addresses;
    for (int i = 0; i < 5000; ++i) {
        Counted* record = table.New(&alive);
        addresses.insert(record);
        table.Delete(record);
    }
    CHECK(addresses.size() < 1000);
}

TEST_CASE("ReferenceTable: ForEach passes over a record that was disposed of on the way")
{
    int alive = 0, visited = 0;
    ReferenceTable<Counted> table;
    Counted* both[] = { table.New(&alive), table.New(&alive) };
    table.ForEach([&](Counted* record) {
        ++visited;
        table.Delete(both[record == both[0] ? 1 : 0]);
    });
    CHECK(visited == 1);
}
