#include "dbfixture.h"
#include "platform/base/vexmachine.h"

#include <set>

namespace {

/// The least that an object is.
class PlainObject : public CVexDbObject {
public:
    using CVexDbObject::CVexDbObject;
    void makeProperty() override
    {
        _makePropertyList(properties()[L"Shape"], L"X Start", L"1.0", 7, 1);
    }
    std::size_t groups() { return properties().size(); }
};

class SeededMachine : public CVexMachine {
public:
    std::uint64_t identifierSeed() const override { return 5000; }
};

} // namespace

TEST(ObjectTest, WithoutAnyDatabaseThereIsNoneAndNothingIsSaved)
{
    ASSERT_EQ(nullptr, _gpDatabase);
    PlainObject object(nullptr);
    EXPECT_EQ(nullptr, object.database());
    EXPECT_FALSE(object.save());
    EXPECT_FALSE(object.read());
}

TEST(ObjectTest, TheCurrentDatabaseStandsInForNone)
{
    CVexDbDatabase current(false), other(false);
    _gpDatabase = &current;
    const PlainObject fallsBack(nullptr), named(&other);
    _gpDatabase = nullptr;
    EXPECT_EQ(&current, fallsBack.database());
    EXPECT_EQ(&other, named.database());
}

TEST(ObjectTest, NumbersAscendByOneFromTheSeed)
{
    SeededMachine machine;
    const CVexMachineScope scope(machine);
    const std::uint64_t before = std::exchange(CVexDbObject::NextHardID, 0);
    const PlainObject first(nullptr), second(nullptr);
    const std::uint64_t next = std::exchange(CVexDbObject::NextHardID, before);
    EXPECT_EQ(5000u, first.getCreatedTime());
    EXPECT_EQ(5001u, second.getCreatedTime());
    EXPECT_EQ(5002u, next);
}

TEST(ObjectTest, HardIdentifierComesFromTheFileNumberWhenNoTimeIsSet)
{
    PlainObject object(nullptr);
    object.setCreatedTime(77);
    object.setHardId();
    object.setCreatedTime(0);
    EXPECT_EQ(77u, object.hardObjectId());
    EXPECT_EQ(77u, object.getCreatedTime());
}

TEST(ObjectTest, CopyGoesOnIdentifyingItsSource)
{
    const PlainObject source(nullptr);
    const PlainObject copy(source);
    EXPECT_TRUE(copy.objectId() == &source);
    EXPECT_EQ(source.getCreatedTime(), copy.getCreatedTime());
    std::set<CVexDbObjectId> set{CVexDbObjectId(&source), CVexDbObjectId(&copy)};
    EXPECT_EQ(1u, set.size());
}

TEST(ObjectTest, AssignmentTakesIdentityAndPropertiesToo)
{
    PlainObject source(nullptr), target(nullptr);
    source.getProperty();
    source.setErased();
    target = source;
    EXPECT_TRUE(target.objectId() == &source);
    EXPECT_TRUE(target.isErased());
    EXPECT_EQ(1u, target.groups());
    PlainObject copy(source);
    EXPECT_EQ(0u, copy.groups()) << "a copy starts without";
}

TEST(ObjectTest, FreshIdentityIsItsOwnAndNotErased)
{
    PlainObject source(nullptr);
    source.setOwnerId(CVexDbObjectId(&source));
    source.setErased();
    PlainObject copy(source);
    copy.takeFreshIdentity();
    EXPECT_TRUE(copy.objectId() == &copy);
    EXPECT_GT(copy.getCreatedTime(), source.getCreatedTime());
    EXPECT_TRUE(copy.ownerId().isNull());
    EXPECT_FALSE(copy.isErased());
}

TEST(ObjectTest, OnlyAllThreeBitsMakeADimension)
{
    PlainObject object(nullptr);
    object.setObjectStatus(kStatusDimension);
    EXPECT_FALSE(object.isDimension());
    EXPECT_TRUE(object.setObjectStatus(0x94));
    EXPECT_TRUE(object.isDimension());
    EXPECT_TRUE(object.isEntity() && object.isCompoundObject());
}

TEST(ObjectTest, StatusBitsAreSetAndClearedEachByItself)
{
    PlainObject object(nullptr);
    EXPECT_TRUE(object.isVisiable());
    object.setInVisable();
    object.setErased();
    EXPECT_EQ(0x03, object.status());
    object.setVisable();
    EXPECT_FALSE(object.isVisiable()) << "an erased object is not visible";
    object.resetObjectStatus(kStatusErased);
    EXPECT_TRUE(object.isVisiable());
    object.setObjectStatus(0x68);
    EXPECT_TRUE(object.hasAttribute() && object.isUseNesting() && object.isAttribute());
}

TEST(ObjectTest, ThirteenBytesAreNumberClassAndStatus)
{
    CVexDbDatabase drawing(false);
    PlainObject object(&drawing);
    object.setCreatedTime(0x0102030405060708);
    object.setErased();
    const std::vector<std::byte> bytes = savedBytes(drawing, object);
    const std::vector<std::byte> expected{std::byte{8}, std::byte{7}, std::byte{6}, std::byte{5},
                                          std::byte{4}, std::byte{3}, std::byte{2}, std::byte{1},
                                          std::byte{0}, std::byte{0}, std::byte{0}, std::byte{0},
                                          std::byte{2}};
    EXPECT_EQ(expected, bytes);
}

TEST(ObjectTest, CreatedTimeSurvivesAFile)
{
    CVexDbDatabase drawing(false);
    PlainObject written(&drawing), read(&drawing);
    ASSERT_TRUE(readBytes(drawing, read, savedBytes(drawing, written)));
    EXPECT_EQ(written.getCreatedTime(), read.getCreatedTime());
    EXPECT_EQ(written.getCreatedTime(), read.hardObjectId());
}

TEST(ObjectTest, ShortFileFailsTheRead)
{
    CVexDbDatabase drawing(false);
    PlainObject object(&drawing);
    EXPECT_FALSE(readBytes(drawing, object, std::vector<std::byte>(12)));
}

TEST(ObjectTest, PropertiesAreCollectedAnewAtEachCall)
{
    PlainObject object(nullptr);
    object.getProperty();
    const VexPropertyMap map = object.getProperty();
    const std::vector<Property>& rows = map.at(static_cast<int>(VexDb::kEntity)).at(L"Shape");
    ASSERT_EQ(1u, rows.size());
    EXPECT_EQ(CString(L"Change X Start"), rows[0].change);
    EXPECT_EQ(1, rows[0].kind);
    EXPECT_EQ(7u, rows[0].data);
}

TEST(ObjectTest, DeletePropertyEmptiesBothMaps)
{
    VexPropertyMap map{{6, {{L"General", {Property()}}}}};
    VexPropertyGroups groups{{L"Shape", {Property(), Property()}}};
    _deleteProperty(map, groups);
    EXPECT_TRUE(map.empty());
    EXPECT_TRUE(groups.empty());
}

TEST(ObjectIdTest, OrdersByCreationWhateverTheAddress)
{
    PlainObject first(nullptr), second(nullptr);
    first.setCreatedTime(20);
    second.setCreatedTime(10);
    const CVexDbObjectId later(&first), earlier(&second);
    EXPECT_TRUE(earlier < later && earlier <= later && later > earlier && later >= earlier);
    EXPECT_TRUE(earlier != later);
    EXPECT_TRUE(earlier == CVexDbObjectId(&second));
}

TEST(ObjectIdTest, AgainstANumberTheHardIdentifierCounts)
{
    PlainObject object(nullptr);
    object.setCreatedTime(12);
    const CVexDbObjectId id(&object);
    EXPECT_TRUE(id == std::uint64_t{12});
    EXPECT_TRUE(id < std::uint64_t{13} && id > std::uint64_t{11});
    EXPECT_TRUE(id <= std::uint64_t{12} && id >= std::uint64_t{12});
}

TEST(ObjectIdTest, ForwardsToItsObjectAndIsNullByDefault)
{
    PlainObject object(nullptr);
    CVexDbObjectId id(&object);
    object.setErased();
    EXPECT_TRUE(id.isErased());
    EXPECT_FALSE(id.isVisiable());
    id.setNull();
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(id == CVexDbObjectId::kNULL);
}
