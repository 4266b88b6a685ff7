// The intents service as its callers meet it: the real executable, started by the bus, on a bus of the test's own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <future>
#include <iostream>
#include <semaphore>
#include <set>

#include "intents1_proxy.h"
#include "service/bus/intents_service.h"
#include "support/shell.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::Ended;
using test::shell;
using test::writeFile;
using testing::AllOf;
using testing::HasSubstr;
using testing::SizeIs;

constexpr const char* kInterface = kestrovan::Lunabrook::Intents1_proxy::INTERFACE_NAME;
constexpr const char* kInvalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr const char* kUnknownIntent = "kestrovan.Lunabrook.Error.UnknownIntent";
constexpr const char* kUnknownPhrase = "kestrovan.Lunabrook.Error.UnknownPhrase";

class Client : public sdbus::ProxyInterfaces<kestrovan::Lunabrook::Intents1_proxy> {
public:
    Client() : ProxyInterfaces(sdbus::createSessionBusConnection(), kIntentsServiceName, kIntentsServicePath) {
        registerProxy();
    }
    ~Client() { unregisterProxy(); }

    using ProxyInterfaces::getProxy;

    std::string responseOf(const std::string& intentClass) {
        return Handle(intentClass).at("response").get<std::string>();
    }

    // Calls with any arguments; gives the error's name and message, empty ones when there is none.
    template <class... Arguments>
    std::pair<std::string, std::string> errorOf(const std::string& method, const Arguments&... arguments) {
        try {
            auto call = getProxy().createMethodCall(kInterface, method);
            static_cast<void>((call << ... << arguments));
            getProxy().callMethod(call);
        } catch (const sdbus::Error& error) {
            return {error.getName(), error.getMessage()};
        }
        return {};
    }
};

// The bus itself: who owns the service's name, and news of that.
class Bus {
public:
    Bus() : proxy_(sdbus::createProxy(sdbus::createSessionBusConnection(), kBusName, "/org/freedesktop/DBus")) {
        proxy_->uponSignal("NameOwnerChanged")
            .onInterface(kBusName)
            .call([this](const std::string& name, const std::string&, const std::string&) {
                changes_.release(name == kIntentsServiceName ? 1 : 0);
            });
        proxy_->finishRegistration();
    }

    void reload() { proxy_->callMethod("ReloadConfig").onInterface(kBusName); }

    // The process behind the name; 0 for none.
    std::uint32_t process() {
        std::uint32_t process = 0;
        try {
            proxy_->callMethod("GetConnectionUnixProcessID")
                .onInterface(kBusName)
                .withArguments(kIntentsServiceName)
                .storeResultsTo(process);
        } catch (const sdbus::Error&) {
        }
        return process;
    }

    // Waits until the name has come or gone once more; false when it does not.
    bool changes() { return changes_.try_acquire_for(std::chrono::seconds(60)); }

private:
    static constexpr const char* kBusName = "org.freedesktop.DBus";

    std::counting_semaphore<> changes_{0};
    std::unique_ptr<sdbus::IProxy> proxy_;  // the last one: its thread uses what stands above
};

class IntentsServiceTest : public testing::Test {
protected:
    IntentsServiceTest() {
        const char* services = std::getenv("LUNABROOK_TEST_SERVICES");
        if (services == nullptr) {
            std::cerr << "these tests need a bus of their own: run them with ctest\n";
            std::exit(1);
        }
        serviceFile_ = std::filesystem::path(services) / "kestrovan.Lunabrook.service";
        shell("'" LUNABROOK_PROGRAM "'" + std::string(kDevice) + " --time-zone Europe/Berlin demo --preferences '" +
              preferences() + "'");
    }

    ~IntentsServiceTest() override {
        if (const auto process = bus_.process(); process != 0) {
            kill(static_cast<pid_t>(process), SIGTERM);
        }
        while (bus_.process() != 0 && bus_.changes()) {
        }
        EXPECT_EQ(bus_.process(), 0U);
    }

    std::string serviceWith(const std::string& options) const {
        return "'" LUNABROOK_INTENTS_PROGRAM "'" + std::string(kDevice) + " " + options + " --preferences '" +
               preferences() + "'";
    }
    std::string preferences() const { return folder_.path() / "preferences"; }

    // Lets the bus start the service with these options.
    void install(const std::string& options, const std::string& before = "") {
        writeFile(serviceFile_,
                  "[D-BUS Service]\nName=kestrovan.Lunabrook\nExec=" + before + serviceWith(options) + "\n");
        bus_.reload();
    }

    static constexpr const char* kDevice = " --now 2026-06-10T08:30:00+02:00 --locale en_US --language en";
    static constexpr const char* kBerlin = "--time-zone Europe/Berlin";

    test::TemporaryFolder folder_;
    std::filesystem::path serviceFile_;
    Bus bus_;
};

TEST_F(IntentsServiceTest, ListsTheNineAndAnswersThemFromOneProcess) {
    install(kBerlin);
    Client client;
    const auto intents = client.Intents();
    EXPECT_THAT(intents, SizeIs(9));
    std::set<std::uint32_t> processes;
    for (const auto& intent : intents) {
        const std::string& className = std::get<0>(intent);
        EXPECT_NE(std::get<1>(intent), "") << className;
        EXPECT_EQ(client.Recognize(std::get<2>(intent).at(0)), className);
        auto reply = client.Handle(className);
        EXPECT_EQ(reply.at("code").get<std::int64_t>(), 4) << className;
        EXPECT_THAT(reply, SizeIs(className == "LightsOffIntent" ? 2 : 3));
        processes.insert(bus_.process());
    }
    EXPECT_THAT(processes, SizeIs(1));
    const auto parameters =
        client.Describe("LightsOffIntent").at("parameters").get<std::map<std::string, std::string>>();
    EXPECT_THAT(parameters, testing::ElementsAre(testing::Pair("response", "string")));
    EXPECT_EQ(client.responseOf("LightsOffIntent"), "Good Night");
    EXPECT_EQ(client.responseOf("SleepRingsIntent"), "2 sleep rings closed. Today's sleep rating is 98%.");
    EXPECT_THAT(client.Handle("SleepRingsIntent").at("dictionary").get<std::string>(),
                testing::StartsWith(R"({"Sleep%":"98", "REM%":"94", )"));
}

TEST_F(IntentsServiceTest, LeavesWhenIdleAndIsStartedAgain) {
    install(std::string(kBerlin) + " --idle-seconds 0.2");
    Client client;
    for (int start = 1; start <= 2; ++start) {
        EXPECT_EQ(client.Recognize("Good night"), "LightsOffIntent");
        EXPECT_EQ(client.errorOf("Handle").first, kInvalidArguments);  // a refused call does not keep it
        EXPECT_TRUE(bus_.changes() && bus_.changes());
    }
}

// Each of what only reads in turn, and now and then a write.
const char* intentOfCall(std::size_t call) {
    constexpr std::array kReading = {"TimeAsleepIntent",  "ReadinessIntent",  "SleepFuelIntent", "SleepSpO2Intent",
                                     "RespirationIntent", "SleepRingsIntent", "WristTempIntent"};
    return call % 100 == 0 ? "LightsOffIntent" : kReading[call % kReading.size()];
}

void expectAnswers(int clients, std::size_t calls) {
    std::vector<std::future<void>> all;
    for (int client = 0; client < clients; ++client) {
        all.push_back(std::async(std::launch::async, [calls] {
            Client own;
            for (std::size_t call = 0; call < calls; ++call) {
                EXPECT_EQ(own.Handle(intentOfCall(call)).at("code").get<std::int64_t>(), 4);
            }
        }));
    }
    for (auto& client : all) {
        client.get();
    }
}

TEST_F(IntentsServiceTest, AnswersTwentyThousandCallsOfFourClientsInTheSameMemory) {
    install(kBerlin);
    expectAnswers(4, 250);
    const auto kilobytes = [this] {
        const std::string status = test::readFile("/proc/" + std::to_string(bus_.process()) + "/status");
        return std::stol(status.substr(status.find("VmRSS:") + 6));
    };
    const long warm = kilobytes();
    expectAnswers(4, 5000);
    const long grown = kilobytes() - warm;
    std::cout << "20000 bus calls: memory grew by " << grown << " KB over " << warm << " KB\n";
#ifndef LUNABROOK_SANITIZED  // keeps what was freed for a while
    EXPECT_LT(grown, 256);
#endif
}

// With no idle time at all it leaves after each call, while the next ones are already under way.
TEST_F(IntentsServiceTest, LosesNoCallByLeaving) {
    install(std::string(kBerlin) + " --idle-seconds 0");
    expectAnswers(2, 50);
    expectAnswers(1, 50);
}

TEST_F(IntentsServiceTest, RefusesMalformedCallsAndLivesOn) {
    install(kBerlin);
    Client client;
    EXPECT_EQ(client.responseOf("ReadinessIntent"), "Today's Readiness is good.");
    const std::uint32_t process = bus_.process();
    std::string megabyte = "x";
    while (megabyte.size() < 1'000'000) {
        megabyte += "\u00E9";
    }
    struct Row {
        std::pair<std::string, std::string> error;
        const char* name;
        const char* message;
    };
    const Row rows[] = {
        {client.errorOf("Handle", 4), kInvalidArguments, "'i'"},
        {client.errorOf("Handle", ""), kUnknownIntent, "\"\""},
        {client.errorOf("Handle", "readiness"), kUnknownIntent, "\"readiness\"; there are LightsOffIntent, "},
        {client.errorOf("Handle", "readinessIntent"), kUnknownIntent, ", WristTempIntent"},
        {client.errorOf("Handle", megabyte), kUnknownIntent, "\u00E9…\"; "},
        {client.errorOf("Recognize", ""), kUnknownPhrase, "\"\""},
        {client.errorOf("Recognize", "lights on"), kUnknownPhrase,
         "lights on\"; the nearest phrases are \"Lights off\""},
        {client.errorOf("Recognize", megabyte), kUnknownPhrase, "\u00E9…\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.error.first, row.name) << row.message;
        EXPECT_THAT(row.error.second, AllOf(HasSubstr(row.message), SizeIs(testing::Lt(500))));
    }
    EXPECT_EQ(client.responseOf("ReadinessIntent"), "Today's Readiness is good.");
    EXPECT_EQ(bus_.process(), process);
}

// Once a zone that was changed under a running service was not seen.
TEST_F(IntentsServiceTest, SeesStoreAndZoneAsTheyAreNow) {
    const std::filesystem::path zone = folder_.path() / "localtime";
    install("", "/usr/bin/env TZ=:" + zone.string() + " ");
    Client client;
    const std::pair<std::string, const char*> rows[] = {
        {"Europe/Berlin", "\"TimeUntilBed\": \"13.35\""},
        {"Asia/Tokyo", "\"TimeUntilBed\": \"6.35\""},
        {"Pacific/Honolulu", "\"TimeUntilBed\": \"1.33\""},
    };
    for (const auto& [name, untilBed] : rows) {
        std::filesystem::copy_file("/usr/share/zoneinfo/" + name, zone,
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_THAT(client.Handle("LatestBedtimeIntent").at("dictionary").get<std::string>(), HasSubstr(untilBed))
            << name;
    }
    const std::uint32_t process = bus_.process();
    writeFile(std::filesystem::path(preferences()) / "group.kestrovan.Lunabrook.plist", "rubbish");
    EXPECT_EQ(client.responseOf("LatestBedtimeIntent"), "No Data");
    EXPECT_EQ(bus_.process(), process);
}

TEST_F(IntentsServiceTest, TellsAFaultOnEveryCallAndSeesACorrectedTable) {
    const std::filesystem::path table = folder_.path() / "bundle/en.lproj/Localizable.strings";
    const std::string errors = folder_.path() / "errors";
    install(std::string(kBerlin) + " --bundle " + (folder_.path() / "bundle").string(),
            "/bin/sh -c 'exec \"$@\" 2>" + errors + "' sh ");
    Client client;
    writeFile(table, "\"Good Night\" \"x\";");
    EXPECT_EQ(client.responseOf("LightsOffIntent"), "Good Night");
    EXPECT_EQ(client.responseOf("LightsOffIntent"), "Good Night");
    const std::string told = test::readFile(errors);
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2) << told;
    for (const std::string text : {"Sleep well", "Sleep tight, all of you"}) {
        writeFile(table, "\"Good Night\" = \"" + text + "\";");
        EXPECT_EQ(client.responseOf("LightsOffIntent"), text);
    }
    EXPECT_EQ(test::readFile(errors), told);
}

TEST_F(IntentsServiceTest, SaysWhyItCannotServe) {
    const std::string taken = serviceWith(kBerlin);
    const auto owner = sdbus::createSessionBusConnection(kIntentsServiceName);
    struct Row {
        std::string command;
        int status;
        const char* reason;
    };
    const Row rows[] = {
        {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent " + taken, 1, "no session bus"},
        {taken, 1, "another program"},
        {serviceWith("--time-zone Mars"), 2, "Mars"},
        {serviceWith("--idle"), 2, "--idle"},
        {serviceWith("--idle-seconds=-1"), 2, "0 to 86400"},
        {serviceWith("--idle-seconds nan"), 2, "0 to 86400"},
    };
    for (const Row& row : rows) {
        const Ended ended = shell(row.command + " 2>&1");
        EXPECT_EQ(ended.status, row.status) << row.command;
        EXPECT_THAT(ended.output, AllOf(testing::StartsWith("lunabrook-intents: "), HasSubstr(row.reason)));
        EXPECT_EQ(ended.output.find('\n'), ended.output.size() - 1) << row.command;
    }
    owner->releaseName(kIntentsServiceName);
}

TEST_F(IntentsServiceTest, LeavesCleanlyWhenToldTo) {
    for (const int signal : {SIGTERM, SIGINT}) {
        auto ended = std::async(std::launch::async, shell, "exec " + serviceWith(kBerlin) + " 2>&1");
        ASSERT_TRUE(bus_.changes());
        kill(static_cast<pid_t>(bus_.process()), signal);
        EXPECT_TRUE(bus_.changes());
        const Ended end = ended.get();
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(end.output, "");
    }
}

}  // namespace
}  // namespace lunabrook
