#include "platform/linux/user_bus_socket.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>

#include "fakes/row_name.h"
#include "tools/forked.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using platform::FileDescriptor;
using platform::userBusSockets;
using testing::ElementsAre;
using testing::IsEmpty;
using Sockets = std::vector<std::string>;

class UserBusSockets : public testing::Test {
 protected:
  /// The machine's folder of runtime folders, with the user's own in it or not.
  std::string addRuntime() const {
    const std::string own = std::to_string(getuid());
    runtime_.write(own + "/bus", "");
    return runtime_ / own / "bus";
  }
  TempFolder runtime_;
  TempFolder session_;
  ScopedVariable folder_{"XDG_RUNTIME_DIR", nullptr};
  ScopedVariable address_{"DBUS_SESSION_BUS_ADDRESS", nullptr};
};

TEST_F(UserBusSockets, WithoutVariablesAreInTheUsersRuntimeFolder) {
  EXPECT_THAT(userBusSockets(runtime_.path()), IsEmpty());
  const std::string own = addRuntime();
  EXPECT_THAT(userBusSockets(runtime_.path()), ElementsAre(own));
}

TEST_F(UserBusSockets, AreLookedForWhereTheVariablesSayFirst) {
  const std::string own = addRuntime();
  const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/x/bus");
  const ScopedVariable folder("XDG_RUNTIME_DIR", session_.path().c_str());
  EXPECT_THAT(userBusSockets(runtime_.path()), ElementsAre("/x/bus", own)) << "there is no bus";
  session_.write("bus", "");
  EXPECT_THAT(userBusSockets(runtime_.path()), ElementsAre(session_ / "bus", "/x/bus", own));
}

TEST_F(UserBusSockets, AreNotLookedForInFoldersThatAreNone) {
  session_.write("file", "");
  for (const std::string& none : {std::string(), std::string("."), (session_ / "file").string(),
                                  (session_ / "gone").string()}) {
    const ScopedVariable folder("XDG_RUNTIME_DIR", none.c_str());
    EXPECT_THAT(userBusSockets(runtime_.path()), IsEmpty()) << none;
  }
}

TEST_F(UserBusSockets, AreNotLookedForInFoldersOfOthers) {
  if (getuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  addRuntime();
  session_.write("bus", "");
  for (const auto& folder : {session_.path(), runtime_ / "0"}) {
    ASSERT_EQ(chown(folder.c_str(), kStranger, kStranger), 0);
  }
  const ScopedVariable folder("XDG_RUNTIME_DIR", session_.path().c_str());
  EXPECT_THAT(userBusSockets(runtime_.path()), IsEmpty());
}

struct AddressRow {
  const char* name;
  const char* address;
  Sockets sockets;
};

class BusAddress : public UserBusSockets, public testing::WithParamInterface<AddressRow> {};

TEST_P(BusAddress, NamesItsSockets) {
  const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", GetParam().address);
  EXPECT_EQ(userBusSockets(runtime_.path()), GetParam().sockets);
}

INSTANTIATE_TEST_SUITE_P(
    Table, BusAddress,
    testing::Values(
        AddressRow{"Path", "unix:path=/run/bus", {"/run/bus"}},
        AddressRow{"WithMoreKeys", "unix:guid=1f,path=/run/bus,x=y", {"/run/bus"}},
        AddressRow{"InNoFolder", "unix:abstract=/tmp/x,guid=1f", {std::string("\0/tmp/x", 7)}},
        AddressRow{"Several", "unix:path=/a;tcp:host=h,port=1;unix:path=/b", {"/a", "/b"}},
        AddressRow{"Escaped", "unix:path=/a%20b%2c%2F%ff", {"/a b,/\xff"}},
        AddressRow{"EscapedBadly", "unix:path=/a%2;unix:path=/b%zz;unix:path=/c%", {}},
        AddressRow{"Empty", "", {}}, AddressRow{"Nonsense", "nonsense", {}},
        AddressRow{"WithoutAValue", "unix:path=;unix:path;unix:;;unix:,,=", {}},
        AddressRow{"OfAnotherKind", "tcp:path=/x", {}},
        AddressRow{"OfAProgram", "unixexec:path=/bin/false", {}}),
    rowName<AddressRow>);

FileDescriptor listener(const std::string& name, int backlog) {
  FileDescriptor end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  name.copy(address.sun_path, sizeof address.sun_path - 1);
  const auto size =
      name.front() == '\0' ? offsetof(sockaddr_un, sun_path) + name.size() : sizeof address;
  EXPECT_EQ(bind(end.get(), reinterpret_cast<sockaddr*>(&address), static_cast<socklen_t>(size)),
            0);
  EXPECT_EQ(listen(end.get(), backlog), 0);
  return end;
}

class UserBusConnection : public testing::Test {
 protected:
  int errorOf(const Sockets& sockets) const {
    int error = 0;
    const FileDescriptor end = platform::connectToUserBus(sockets, error);
    return end.isOpen() ? 0 : error;
  }
  TempFolder folder_;
  const std::string name_ = folder_ / "bus";
};

TEST_F(UserBusConnection, IsToTheFirstThatListens) {
  const auto listening = listener(name_, 4);
  int error = 0;
  const auto end =
      platform::connectToUserBus({"/nonexistent/bus", std::string(200, 'x'), name_}, error);
  ASSERT_TRUE(end.isOpen());
  EXPECT_NE(fcntl(end.get(), F_GETFL) & O_NONBLOCK, 0);
  EXPECT_NE(fcntl(end.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(UserBusConnection, MayBeToASocketInNoFolder) {
  const std::string name = std::string(1, '\0') + folder_.path().string();
  const auto listening = listener(name, 4);
  EXPECT_EQ(errorOf({name}), 0);
}

TEST_F(UserBusConnection, IsNoneWhereNobodyListens) {
  EXPECT_EQ(errorOf({}), ENOENT);
  EXPECT_EQ(errorOf({name_}), ENOENT);
  EXPECT_EQ(errorOf({std::string(200, 'x')}), ENAMETOOLONG);
  { const auto listening = listener(name_, 4); }
  EXPECT_EQ(errorOf({name_}), ECONNREFUSED);
}

TEST_F(UserBusConnection, IsNotWaitedForWhereNobodyTakesIt) {
  const auto listening = listener(name_, 0);
  std::vector<FileDescriptor> ends;
  int error = 0;
  while (error == 0) {
    ends.push_back(platform::connectToUserBus({name_}, error));
    if (ends.back().isOpen()) error = 0;
    ASSERT_LT(ends.size(), 100U);
  }
  EXPECT_EQ(error, EAGAIN);
}

TEST_F(UserBusConnection, IsNoneToAnotherUsersProgram) {
  if (getuid() != 0) GTEST_SKIP() << "only root can be two users";
  const auto listening = listener(name_, 4);
  ASSERT_EQ(chmod(name_.c_str(), 0777), 0);
  const int error = resultOfForked([this] {
    if (!becomeStranger()) return 1;
    return errorOf({name_});
  });
  EXPECT_EQ(error, EPERM);
}

}  // namespace
