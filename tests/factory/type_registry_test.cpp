#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "factory/own_entries.h"

namespace LmImagingLib {
namespace {

using LmBaseLib::Result;

// Other libraries register their types from static objects, which may come to life before the built-in entries and
// may ask for them after the registry is gone; the sanitizers watch the latter.
constexpr PixelTypeID kEarlyId = PixelTypeID{0x7E57} << 32 | 0x10001;

struct Plugin {
  Plugin() {
    result = PixelTypeFactory::RegisterPixelType(kEarlyId, std::make_unique<Grayscale8>(kEarlyId).get(), "early");
  }
  ~Plugin() { PixelTypeFactory::HasPixelType(kEarlyId); }
  Result result;
};

struct Straggler {
  ~Straggler() {
    PixelTypeFactory::FindConverter(kEarlyId, kEarlyId);
    PixelTypeFactory::GetPixelTypeName(kEarlyId);
  }
};

const Straggler kStraggler;
const Plugin kPlugin;

TEST(TypeRegistry, ServesStaticObjects) {
  EXPECT_EQ(kPlugin.result.GetCode(), Result::OK);
  EXPECT_STREQ(PixelTypeFactory::GetPixelTypeName(kEarlyId), "early");
  EXPECT_TRUE(PixelTypeFactory::HasPixelType(0x10001));
}

TEST(TypeRegistry, KeepsACloneAndTheFirstRegistration) {
  const PixelTypeID id = OwnIds()(0x10002);
  auto type = std::make_unique<Grayscale10>(id);
  std::string name = "ten bits";
  EXPECT_EQ(PixelTypeFactory::RegisterPixelType(id, type.get(), name.c_str()).GetCode(), Result::OK);
  type.reset();
  name.assign(name.size(), '?');

  const PixelType* const registered = PixelTypeFactory::FindPixelType(id);
  ASSERT_NE(registered, nullptr);
  const PixelConverter* const identity = PixelTypeFactory::FindConverter(id, id);
  const RGB24 other(id);
  EXPECT_EQ(PixelTypeFactory::RegisterPixelType(id, &other, "another").GetCode(), Result::INVALID_PARAMETER);

  EXPECT_EQ(PixelTypeFactory::FindPixelType(id), registered);
  EXPECT_EQ(&PixelTypeFactory::GetPixelType(id), registered);
  EXPECT_EQ(registered->GetPixelBitSize(), 10u);
  EXPECT_STREQ(PixelTypeFactory::GetPixelTypeName(id), "ten bits");
  EXPECT_EQ(PixelTypeFactory::FindConverter(id, id), identity);
  EXPECT_NE(dynamic_cast<const IdentityConverter*>(identity), nullptr);
  EXPECT_EQ(identity->GetSourceTypeID(), id);
  EXPECT_EQ(identity->GetDestinationPixelByteSize(), 2u);
}

TEST(TypeRegistry, TellsIdsApartByTheirHighBitsOnly) {
  const OwnIds first;
  const OwnIds second;
  const Grayscale8 type(first(0x210001));
  EXPECT_TRUE(PixelTypeFactory::RegisterPixelType(type.GetTypeID(), &type, nullptr).IsOK());
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(second(0x210001)));
  EXPECT_STREQ(PixelTypeFactory::GetPixelTypeName(type.GetTypeID()), "Grayscale8-bits, Interlaced");
}

TEST(TypeRegistry, NamesATypeAskedForTooEarly) {
  const PixelTypeID id = OwnIds()(0x10001);
  const char* const early = PixelTypeFactory::GetPixelTypeName(id);
  EXPECT_STREQ(early, "Unregistered pixel type");
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(id));
  const Grayscale8 type(id);
  EXPECT_TRUE(PixelTypeFactory::RegisterPixelType(id, &type, "").IsOK());
  EXPECT_STREQ(PixelTypeFactory::GetPixelTypeName(id), "");
  EXPECT_STREQ(early, "Unregistered pixel type");
}

TEST(TypeRegistry, RefusesWhatIsNoType) {
  class Uncloned : public Grayscale8 {
   public:
    PixelType* Clone() const override { return nullptr; }
  };
  const PixelTypeID id = OwnIds()(0x10001);
  const Uncloned type;
  EXPECT_EQ(PixelTypeFactory::RegisterPixelType(id, nullptr, "").GetCode(), Result::INVALID_PARAMETER);
  EXPECT_EQ(PixelTypeFactory::RegisterPixelType(id, &type, "").GetCode(), Result::NOT_ENOUGH_MEMORY);
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(id));
  EXPECT_FALSE(PixelTypeFactory::HasConverter(id, id));
}

TEST(TypeRegistry, CreatesTypesForTheCaller) {
  const std::unique_ptr<PixelType> first(PixelTypeFactory::CreatePixelType(0x20011));
  const std::unique_ptr<PixelType> second(PixelTypeFactory::CreatePixelType(0x20011));
  ASSERT_NE(first, nullptr);
  EXPECT_NE(first, second);
  EXPECT_NE(first.get(), PixelTypeFactory::FindPixelType(0x20011));
  EXPECT_TRUE(first->IsBayerPattern());
}

TEST(TypeRegistry, HasNothingUnderAnUnknownId) {
  const PixelTypeID id = OwnIds()(0x10001);
  EXPECT_FALSE(PixelTypeFactory::HasPixelType(id));
  EXPECT_EQ(PixelTypeFactory::FindPixelType(id), nullptr);
  EXPECT_EQ(PixelTypeFactory::CreatePixelType(id), nullptr);
  const PixelType* volatile address = &PixelTypeFactory::GetPixelType(id);  // else the compiler takes it for not null
  EXPECT_EQ(address, nullptr);
}

TEST(TypeRegistry, AnswersThreadsWhileTypesArrive) {
  constexpr PixelTypeID kTypes = 200;
  constexpr int kReaders = 3;
  const OwnIds ids;
  std::atomic<int> failures{0};
  std::vector<std::thread> readers;
  readers.reserve(kReaders);
  for (int t = 0; t < kReaders; ++t) {
    readers.emplace_back([&] {
      // Whoever sees a type sees all of its registration.
      for (PixelTypeID n = 0; n < kTypes;) {
        const PixelTypeID id = ids(0x10000 | n);
        const PixelType* const type = PixelTypeFactory::FindPixelType(id);
        if (type == nullptr) {
          std::this_thread::yield();
          continue;
        }
        const bool complete = type->GetTypeID() == id && PixelTypeFactory::HasConverter(id, id) &&
                              PixelTypeFactory::GetPixelTypeName(id) == std::to_string(n);
        if (!complete) ++failures;
        ++n;
      }
    });
  }
  for (PixelTypeID n = 0; n < kTypes; ++n) {
    const Grayscale16 type(ids(0x10000 | n));
    EXPECT_TRUE(PixelTypeFactory::RegisterPixelType(type.GetTypeID(), &type, std::to_string(n).c_str()).IsOK());
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(failures, 0);
}

}  // namespace
}  // namespace LmImagingLib
