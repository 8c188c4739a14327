// The keys in a real Secret Service (the headless desktop starts gnome-keyring); skipped on a
// machine that has none, where the store must say so rather than hang or crash.

#include "platform/linux/secret/secret_service_store.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vesko {
namespace {

// An account of its own, so that a learner's real keys are never touched.
std::string testAccount() {
  std::random_device random;
  return "vesko-test-" + std::to_string(random());
}

TEST(SecretServiceStoreTest, SaveReadReplaceAndRemove) {
  SecretServiceStore store;
  const std::string account = testAccount();
  auto first = store.read(account);
  if (!first) GTEST_SKIP() << "no Secret Service here: " << first.error().detail;
  EXPECT_EQ(*first, "");

  ASSERT_TRUE(store.save(account, "sk-first-ключ"));
  EXPECT_EQ(store.read(account).value_or("?"), "sk-first-ключ");
  ASSERT_TRUE(store.save(account, "sk-second"));
  EXPECT_EQ(store.read(account).value_or("?"), "sk-second");
  ASSERT_TRUE(store.save(account, ""));
  EXPECT_EQ(store.read(account).value_or("?"), "");
  // Removing what is not there is no failure.
  EXPECT_TRUE(store.save(account, ""));
}

TEST(SecretServiceStoreTest, WithoutASessionBusItSaysSo) {
  const char* saved = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  const std::string address = saved ? saved : "";
  const char* savedRuntime = std::getenv("XDG_RUNTIME_DIR");
  const std::string runtime = savedRuntime ? savedRuntime : "";
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  setenv("XDG_RUNTIME_DIR", "/nonexistent-vesko-runtime", 1);
  SecretServiceStore store;
  auto read = store.read("claude");
  auto save = store.save("claude", "sk-never-stored");
  if (saved) setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  if (savedRuntime)
    setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
  else
    unsetenv("XDG_RUNTIME_DIR");
  ASSERT_FALSE(read);
  EXPECT_NE(read.error().detail.find("Secret Service"), std::string::npos);
  ASSERT_FALSE(save);
  EXPECT_EQ(save.error().detail.find("sk-never-stored"), std::string::npos);
}

}  // namespace
}  // namespace vesko
