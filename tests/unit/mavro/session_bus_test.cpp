#include "SessionBus.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

#include "ConsoleFixture.h"
#include "Descriptor.h"
#include "ScopedVariable.h"
#include "TempFolder.h"

namespace mavro {
namespace {

TEST(SafeBusAddress, NoneNamed_IsNone_UnlessTheUsersIsThere) {
  EXPECT_EQ(SafeBusAddress("", false), "disabled:");
  EXPECT_EQ(SafeBusAddress("", true), std::nullopt);
}

TEST(SafeBusAddress, OneThatIsThere_Stays) {
  for (const char* address : {"unix:path=/run/user/0/bus", "tcp:host=a;unix:path=/b", "disabled:"})
    EXPECT_EQ(SafeBusAddress(address, false), std::nullopt) << address;
}

TEST(SafeBusAddress, OneThatStartsAProgram_IsTakenOut) {
  EXPECT_EQ(SafeBusAddress("autolaunch:", true), "disabled:");
  EXPECT_EQ(SafeBusAddress("autolaunch:scope=x;;", false), "disabled:");
  EXPECT_EQ(SafeBusAddress("unix:path=/a;autolaunch:;tcp:host=b", false),
            "unix:path=/a;tcp:host=b");
}

// Programs that we start are the user's: they get what the user has set.
struct BusOfChildren : test::ConsoleFixture {
  // The variable in this process and in a child of it.
  std::vector<std::string> Values(const char* given) {
    const test::ScopedVariable runtime("XDG_RUNTIME_DIR", folder.Path());
    const test::ScopedVariable variable(cBusVariable, given ? given : "");
    if (!given) unsetenv(cBusVariable);
    KeepBusFromStarting();
    const char* own = std::getenv(cBusVariable);
    lines = {own ? own : "none"};
    console.Execute(Child("environment DBUS_SESSION_BUS_ADDRESS"), cBlocking);
    return lines;
  }
  ~BusOfChildren() override {
    const test::ScopedVariable variable(cBusVariable, "unix:path=/bus");
    KeepBusFromStarting();
  }

  test::TempFolder folder;
};

TEST_F(BusOfChildren, HasTheUsersValue) {
  using Lines = std::vector<std::string>;
  const std::string name = std::string(cBusVariable) + "=";
  EXPECT_EQ(Values("unix:path=/a"), (Lines{"unix:path=/a", name + "unix:path=/a"}));
  EXPECT_EQ(Values("autolaunch:"), (Lines{"disabled:", name + "autolaunch:"}));
  EXPECT_EQ(Values(nullptr), (Lines{"disabled:", "DBUS_SESSION_BUS_ADDRESS is not set"}));
}

TEST_F(BusOfChildren, SocketOfTheUsers_IsTheBus) {
  const Descriptor bus(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address = {AF_UNIX, {}};
  std::strncpy(address.sun_path, folder.Path("bus").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(bus.Number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(Values(nullptr).front(), "none");
}

TEST_F(BusOfChildren, FileInItsPlace_IsNoBus) {
  folder.Write("bus", "");
  EXPECT_EQ(Values(nullptr).front(), "disabled:");
}

}  // namespace
}  // namespace mavro
