// Stopping and starting, over a real message bus, with a manager that does what a test says.
#include "platform/linux/systemd_operation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <optional>
#include <thread>

#include "fakes/row_name.h"
#include "platform/linux/user_bus.h"
#include "tools/scripted_manager.h"

namespace {

using namespace std::chrono_literals;
using platform::ServiceReply;
using platform::SystemdOperation;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Verb = SystemdOperation::Verb;
using Clock = std::chrono::steady_clock;

class ServiceOperations : public testing::Test {
 protected:
  void SetUp() override {
    if (!manager_.reason().empty()) GTEST_SKIP() << manager_.reason();
    manager_.setUnit("ollama", {.pid = 7});
  }

  SystemdOperation operation(Verb verb, const std::string& label = "ollama") const {
    return {verb, label, [sockets = manager_.sockets()] { return sockets; }};
  }

  /// Until it has ended.
  static ServiceReply end(SystemdOperation& operation) {
    const auto deadline = Clock::now() + 60s;
    while (Clock::now() < deadline) {
      if (const auto reply = operation.poll()) return *reply;
      std::this_thread::sleep_for(1ms);
    }
    ADD_FAILURE() << "it goes on";
    return {};
  }

  /// Until the manager was asked this.
  void order(SystemdOperation& operation, const std::string& call) {
    const auto deadline = Clock::now() + 60s;
    while (Clock::now() < deadline) {
      ASSERT_EQ(operation.poll(), std::nullopt);
      const auto calls = manager_.calls();
      if (std::find(calls.begin(), calls.end(), call) != calls.end()) return;
      std::this_thread::sleep_for(1ms);
    }
    FAIL() << "it was not asked";
  }

  /// For long enough to hear what was said before.
  static void expectToGoOn(SystemdOperation& operation) {
    for (int i = 0; i < 50; ++i) {
      ASSERT_EQ(operation.poll(), std::nullopt);
      std::this_thread::sleep_for(1ms);
    }
  }

  ScriptedManager manager_;
};

TEST_F(ServiceOperations, AreLookedAfterAFewMessagesAtATime) {
  platform::BusFailure failure;
  const auto bus = platform::UserBus::open(manager_.sockets(), failure);
  ASSERT_TRUE(bus);
  int heard = 0;
  const auto hear = [](sd_bus_message*, void* count, sd_bus_error*) {
    ++*static_cast<int*>(count);
    return 0;
  };
  ASSERT_GE(sd_bus_match_signal(bus->get(), nullptr, nullptr, "/org/freedesktop/systemd1", nullptr,
                                "JobRemoved", hear, &heard),
            0);
  constexpr int kMany = 200;
  constexpr int kMostSignals = 10;
  manager_.endOtherJobs(kMany);
  const auto deadline = Clock::now() + 60s;
  int most = 0;
  while (heard < kMany && Clock::now() < deadline) {
    std::this_thread::sleep_for(5ms);  // so that more has come than is taken
    const int before = heard;
    bus->catchUp([] { return false; }, failure, kMostSignals);
    most = std::max(most, heard - before);
  }
  EXPECT_EQ(heard, kMany);
  EXPECT_EQ(most, kMostSignals);
}

struct ResultRow {
  const char* name;
  const char* result;
  bool done;
};

class ServiceOperationResults : public ServiceOperations,
                                public testing::WithParamInterface<ResultRow> {};

TEST_P(ServiceOperationResults, AreTheManagersWord) {
  for (const auto& [verb, call] : {std::pair{Verb::start, "StartUnit ollama.service"},
                                   {Verb::stop, "StopUnit ollama.service"}}) {
    SystemdOperation one = operation(verb);
    order(one, call);
    expectToGoOn(one);
    manager_.endJob(GetParam().result);
    const ServiceReply reply = end(one);
    EXPECT_EQ(reply.status == 0, GetParam().done);
    EXPECT_EQ(reply.errorText, GetParam().done ? ""
                                               : std::string("The job for ollama.service ended: ") +
                                                     GetParam().result);
    EXPECT_EQ(one.poll().value().status, reply.status) << "and that stands";
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ServiceOperationResults,
                         testing::Values(ResultRow{"Done", "done", true},
                                         ResultRow{"Failed", "failed", false},
                                         ResultRow{"Canceled", "canceled", false},
                                         ResultRow{"Timeout", "timeout", false},
                                         ResultRow{"Dependency", "dependency", false},
                                         ResultRow{"Unknown", "", false}),
                         rowName<ResultRow>);

TEST_F(ServiceOperations, DoNotEndWithAnother) {
  SystemdOperation one = operation(Verb::start);
  order(one, "StartUnit ollama.service");
  manager_.endJob("failed", "/org/freedesktop/systemd1/job/77");
  manager_.endJob("failed", "/org/freedesktop/systemd1/job/11");
  expectToGoOn(one);
  manager_.endJob("done");
  EXPECT_EQ(end(one).status, 0);
}

TEST_F(ServiceOperations, EndWhicheverWasOrderedFirst) {
  SystemdOperation first = operation(Verb::start);
  order(first, "StartUnit ollama.service");
  SystemdOperation second = operation(Verb::stop);
  order(second, "StopUnit ollama.service");
  manager_.endJob("canceled", "/org/freedesktop/systemd1/job/1");
  EXPECT_NE(end(first).status, 0);
  expectToGoOn(second);
  manager_.endJob("done", "/org/freedesktop/systemd1/job/2");
  EXPECT_EQ(end(second).status, 0);
}

TEST_F(ServiceOperations, EndByNobodyElsesWord) {
  SystemdOperation one = operation(Verb::stop);
  order(one, "StopUnit ollama.service");
  manager_.endJobAsStranger("done");
  manager_.goAsStranger();
  expectToGoOn(one);
  manager_.endJob("failed");
  EXPECT_THAT(end(one).errorText, HasSubstr("failed"));
}

TEST_F(ServiceOperations, AreHeardInAFlood) {
  constexpr int kOthers = 5'000;
  SystemdOperation one = operation(Verb::start);
  order(one, "StartUnit ollama.service");
  expectToGoOn(one);  // the answer was heard
  manager_.endOtherJobs(kOthers);
  manager_.endJob("done");
  EXPECT_EQ(end(one).status, 0);
}

TEST_F(ServiceOperations, ThatAreRefusedSayWhy) {
  for (const char* error :
       {"org.freedesktop.systemd1.NoSuchUnit", "org.freedesktop.DBus.Error.AccessDenied"}) {
    manager_.refuseOrders(error, "Not this one.");
    SystemdOperation one = operation(Verb::start);
    const ServiceReply reply = end(one);
    EXPECT_NE(reply.status, 0);
    EXPECT_EQ(reply.errorText, "Not this one.");
  }
  SystemdOperation stop = operation(Verb::stop);
  EXPECT_EQ(end(stop).errorText, "Not this one.") << "it is active and may not be stopped";
}

TEST_F(ServiceOperations, StoppingWhatIsGoneMeanwhileCouldNotFindIt) {
  manager_.refuseOrders("org.freedesktop.systemd1.NoSuchUnit", "Unit ollama.service not loaded.");
  SystemdOperation one = operation(Verb::stop);
  EXPECT_THAT(end(one).errorText, HasSubstr("Could not find"));
}

TEST_F(ServiceOperations, StoppingWhatIsNotActiveCouldNotFindIt) {
  manager_.setUnit("idle", {.activeState = "inactive"});
  manager_.setUnit("broken", {.activeState = "failed"});
  for (const char* label : {"idle", "broken", "unknown"}) {
    SystemdOperation one = operation(Verb::stop, label);
    EXPECT_THAT(end(one).errorText, HasSubstr("Could not find")) << label;
  }
  EXPECT_THAT(manager_.calls(), Not(Contains(HasSubstr("StopUnit"))));
}

TEST_F(ServiceOperations, StartNothingWhenTheyAreMade) {
  const SystemdOperation one = operation(Verb::start);
  EXPECT_THAT(manager_.calls(), ElementsAre());
}

TEST_F(ServiceOperations, OrderOnce) {
  SystemdOperation one = operation(Verb::start);
  order(one, "StartUnit ollama.service");
  expectToGoOn(one);
  EXPECT_THAT(manager_.calls(), ElementsAre("Subscribe", "StartUnit ollama.service"));
}

TEST_F(ServiceOperations, EndWhenTheManagerLeaves) {
  SystemdOperation taken = operation(Verb::stop);
  order(taken, "StopUnit ollama.service");
  expectToGoOn(taken);
  manager_.hold();
  SystemdOperation notTaken = operation(Verb::start);
  order(notTaken, "Subscribe");
  manager_.disconnect();
  for (SystemdOperation* one : {&taken, &notTaken}) {
    const ServiceReply reply = end(*one);
    EXPECT_NE(reply.status, 0);
    EXPECT_THAT(reply.errorText, Not(HasSubstr("Could not find")));
  }
}

TEST_F(ServiceOperations, EndWhenTheBusIsGone) {
  SystemdOperation one = operation(Verb::stop);
  order(one, "StopUnit ollama.service");
  expectToGoOn(one);
  ASSERT_EQ(kill(manager_.bus(), SIGKILL), 0);
  EXPECT_NE(end(one).status, 0);
}

TEST_F(ServiceOperations, WithoutAManagerFail) {
  manager_.disconnect();
  for (const Verb verb : {Verb::stop, Verb::start}) {
    SystemdOperation one = operation(verb);
    const ServiceReply reply = end(one);
    EXPECT_NE(reply.status, 0);
    EXPECT_THAT(reply.errorText, Not(HasSubstr("Could not find")));
  }
}

TEST_F(ServiceOperations, OfAManagerThatTalksNonsenseFail) {
  manager_.talkNonsense();
  for (const Verb verb : {Verb::stop, Verb::start}) {
    SystemdOperation one = operation(verb);
    EXPECT_NE(end(one).status, 0);
  }
}

TEST_F(ServiceOperations, OfAManagerThatHangsGoOnAndAreForgottenAtOnce) {
  manager_.hold();
  const auto begin = Clock::now();
  {
    SystemdOperation one = operation(Verb::stop);
    expectToGoOn(one);
  }
  EXPECT_LT(Clock::now() - begin, 20s) << "no look waits";
}

TEST_F(ServiceOperations, OfAManagerThatHungAreDoneWhenItGoesOn) {
  manager_.hold();
  SystemdOperation one = operation(Verb::stop);
  expectToGoOn(one);
  manager_.release();
  order(one, "StopUnit ollama.service");
  manager_.endJob("done");
  EXPECT_EQ(end(one).status, 0);
}

TEST(ServiceOperationsWithoutABus, Fail) {
  for (const std::vector<std::string>& sockets :
       {std::vector<std::string>{}, {"/nonexistent/bus"}}) {
    SystemdOperation one(Verb::stop, "ollama", [sockets] { return sockets; });
    const auto reply = one.poll();
    ASSERT_TRUE(reply);
    EXPECT_NE(reply->status, 0);
    EXPECT_NE(reply->errorText, "");
    EXPECT_THAT(reply->errorText, Not(HasSubstr("Could not find")));
  }
}

}  // namespace
