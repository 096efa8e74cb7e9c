#include "ztutil/ZtUVector.h"
#include "ztutil/ZtUWideStrVoidPtrDict.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(ZtUWideStrVoidPtrDict, WalksKeysInCodeUnitOrder) {
    ZtUWideStrVoidPtrDict dict;
    int a = 0, b = 0, c = 0, d = 0;
    EXPECT_EQ(dict.Enter(L"pipes.dgn", &a), 1);
    EXPECT_EQ(dict.Enter(L"Steel.dgn", &b), 1);
    EXPECT_EQ(dict.Enter(L"\u00e9quip.dgn", &c), 1);
    EXPECT_EQ(dict.Enter(L"", &d), 1);
    std::vector<std::wstring> keys;
    for (ZtUWideStrVoidPtrDictIt it = dict.Begin(); it.IsValid(); it.Next())
        keys.push_back(it.GetKey());
    EXPECT_EQ(keys,
              (std::vector<std::wstring>{L"", L"Steel.dgn", L"pipes.dgn", L"\u00e9quip.dgn"}));
}

TEST(ZtUVectors, GuardTheirIndices) {
    ZtUVoidPtrVector v;
    int a = 0, b = 0, c = 0;
    EXPECT_EQ(v.Back(), nullptr);
    v.PopBack();
    v.PushBack(&a);
    v.PushBack(&b);
    v.PushBack(&c);
    v.Erase(1);
    EXPECT_EQ(v.Size(), 2u);
    EXPECT_EQ(v[1], &c);
    EXPECT_EQ(v[2], nullptr);
    v.Erase(7);
    EXPECT_EQ(v.Size(), 2u);

    ZtUOwnPtrVector<std::string> owned;
    owned.PushBack(new std::string("a"));
    owned.PushBack(new std::string("b"));
    std::string* released = owned.Release(0);
    EXPECT_EQ(*released, "a");
    delete released;
    EXPECT_EQ(*owned.Back(), "b");
    EXPECT_EQ(owned.Release(5), nullptr);

    ZtUInt32Vector numbers;
    numbers.PushBack(-1);
    EXPECT_EQ(numbers[0], -1);
    EXPECT_EQ(numbers[1], 0);
}

} // namespace
