// The intents service as its callers meet it: the real executable, started by the bus, on a bus of the test's own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <mutex>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "host/intents_service.h"
#include "intents/intent_dispatch.h"
#include "intents1_proxy.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

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

    // As the command prints it.
    nlohmann::json ask(const std::string& intentClass) {
        const auto reply = Handle(intentClass);
        nlohmann::json object = {{"intent", intentClass}, {"response", nullptr}, {"dictionary", nullptr}};
        for (const auto& [field, value] : reply) {
            object[field] =
                field == "code" ? nlohmann::json(value.get<std::int64_t>()) : nlohmann::json(value.get<std::string>());
        }
        return object;
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
            .call([this](const std::string& name, const std::string&, const std::string& owner) { hear(name, owner); });
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

    // These wait for the news; false when they do not come.
    bool isServed(bool served) {
        return comesTrue([this, served] { return owner_.empty() != served; });
    }
    bool hasBeenLeft(int times) {
        return comesTrue([this, times] { return departures_ >= times; });
    }

private:
    static constexpr const char* kBusName = "org.freedesktop.DBus";

    bool comesTrue(const std::function<bool()>& news) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(60), news);
    }

    void hear(const std::string& name, const std::string& owner) {
        if (name == kIntentsServiceName) {
            const std::lock_guard lock(mutex_);
            owner_ = owner;
            departures_ += owner.empty() ? 1 : 0;
            changed_.notify_all();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::string owner_;
    int departures_ = 0;
    std::unique_ptr<sdbus::IProxy> proxy_;  // the last one: its thread uses what stands above
};

struct Ended {
    std::string output;
    int status = -1;
};

Ended run(const std::string& command) {
    Ended ended;
    FILE* pipe = popen(command.c_str(), "r");
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
        ended.output += static_cast<char>(byte);
    }
    const int status = pclose(pipe);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

class IntentsServiceTest : public testing::Test {
protected:
    IntentsServiceTest() {
        const char* services = std::getenv("LUNABROOK_TEST_SERVICES");
        if (services == nullptr) {
            std::fputs("these tests need a bus of their own: run them with ctest\n", stderr);
            std::exit(1);
        }
        serviceFile_ = std::filesystem::path(services) / "kestrovan.Lunabrook.service";
        run(std::string(LUNABROOK_PROGRAM) + kDevice + " --time-zone Europe/Berlin demo --preferences " + served());
        std::filesystem::copy(served(), asked(), std::filesystem::copy_options::recursive);
    }

    ~IntentsServiceTest() override {
        if (const auto process = bus_.process(); process != 0) {
            kill(static_cast<pid_t>(process), SIGTERM);
            EXPECT_TRUE(bus_.isServed(false));
        }
    }

    // Two equal stores: the service's and the command's.
    std::string served() const { return folder_.path() / "served"; }
    std::string asked() const { return folder_.path() / "asked"; }
    std::string serviceWith(const std::string& options) const {
        return std::string(LUNABROOK_INTENTS_PROGRAM) + kDevice + " " + options + " --preferences " + served();
    }

    // Lets the bus start the service with these options.
    void install(const std::string& options, const std::string& before = "") {
        writeFile(serviceFile_,
                  "[D-BUS Service]\nName=kestrovan.Lunabrook\nExec=" + before + serviceWith(options) + "\n");
        bus_.reload();
    }

    nlohmann::json asks(const std::string& intents, const std::string& zone) const {
        const Ended ended = run(std::string(LUNABROOK_PROGRAM) + kDevice + " --time-zone " + zone + " --preferences " +
                                asked() + " ask --json " + intents + " 2>&-");
        std::istringstream lines(ended.output);
        nlohmann::json answers = nlohmann::json::array();
        for (std::string line; std::getline(lines, line);) {
            answers.push_back(nlohmann::json::parse(line));
        }
        return answers;
    }

    static constexpr const char* kDevice = " --now 2026-06-10T08:30:00+02:00 --locale en_US --language en";
    static constexpr const char* kBerlin = "--time-zone Europe/Berlin";

    test::TemporaryFolder folder_;
    std::filesystem::path serviceFile_;
    Bus bus_;
};

TEST_F(IntentsServiceTest, AnswersAsTheCommandDoesFromOneProcess) {
    install(kBerlin);
    Client client;
    std::string intents;
    std::set<std::uint32_t> processes;
    nlohmann::json answers = nlohmann::json::array();
    for (const IntentRoute& route : intentRoutes()) {
        intents += std::string(route.className) + " ";
        answers.push_back(client.ask(std::string(route.className)));
        processes.insert(bus_.process());
    }
    EXPECT_EQ(answers.size(), 9U);
    EXPECT_EQ(processes.size(), 1U);
    EXPECT_EQ(answers, asks(intents, "Europe/Berlin"));
}

TEST_F(IntentsServiceTest, LeavesWhenIdleAndIsStartedAgain) {
    install(std::string(kBerlin) + " --idle-seconds 0.2");
    Client client;
    for (int start = 1; start <= 2; ++start) {
        EXPECT_EQ(client.Recognize("Good night"), "LightsOffIntent");
        EXPECT_EQ(client.errorOf("Handle").first, kInvalidArguments);  // a refused call does not keep it
        EXPECT_TRUE(bus_.hasBeenLeft(start));
    }
}

void expectAnswers(int calls) {
    Client client;
    for (int call = 0; call < calls; ++call) {
        EXPECT_EQ(client.ask("SleepRingsIntent")["code"], 4);
    }
}

TEST_F(IntentsServiceTest, AnswersAThousandCallsOfEachOfFourClientsAtOnce) {
    install(kBerlin);
    std::vector<std::future<void>> clients;
    for (int client = 0; client < 4; ++client) {
        clients.push_back(std::async(std::launch::async, expectAnswers, 1000));
    }
    for (auto& client : clients) {
        client.get();
    }
}

// With no idle time at all it leaves after each call, while the next ones are already under way.
TEST_F(IntentsServiceTest, LosesNoCallByLeaving) {
    install(std::string(kBerlin) + " --idle-seconds 0");
    auto other = std::async(std::launch::async, expectAnswers, 50);
    expectAnswers(50);
    other.get();
    expectAnswers(50);
}

TEST_F(IntentsServiceTest, RefusesMalformedCallsAndLivesOn) {
    install(kBerlin);
    Client client;
    EXPECT_EQ(client.ask("ReadinessIntent")["code"], 4);
    const std::uint32_t process = bus_.process();
    std::string megabyte = "x";
    while (megabyte.size() < 1'000'000) {
        megabyte += "\u00E9";
    }
    using Error = std::pair<std::string, std::string>;
    struct Row {
        const char* name;
        Error error;
        const char* errorName;
        const char* message;
    };
    const Row rows[] = {
        {"number", client.errorOf("Handle", 4), kInvalidArguments, "'i'"},
        {"nothing", client.errorOf("Handle"), kInvalidArguments, ""},
        {"two", client.errorOf("Handle", "ReadinessIntent", "ReadinessIntent"), kInvalidArguments, "'ss'"},
        {"other_method", client.errorOf("Ask"), "org.freedesktop.DBus.Error.UnknownMethod", "Ask"},
        {"empty", client.errorOf("Handle", ""), kUnknownIntent, "\"\""},
        {"short_name", client.errorOf("Handle", "readiness"), kUnknownIntent, "\"readiness\""},
        {"other_capitals", client.errorOf("Handle", "readinessIntent"), kUnknownIntent, "LightsOffIntent, "},
        {"names_the_last", client.errorOf("Handle", "X"), kUnknownIntent, ", WristTempIntent"},
        {"megabyte", client.errorOf("Handle", megabyte), kUnknownIntent, "\u00E9...\"; "},
        {"empty_phrase", client.errorOf("Recognize", ""), kUnknownPhrase, "\"\""},
        {"nonsense_phrase", client.errorOf("Recognize", "colourless green ideas"), kUnknownPhrase, "colourless"},
        {"megabyte_phrase", client.errorOf("Recognize", megabyte), kUnknownPhrase, "\u00E9...\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.error.first, row.errorName) << row.name;
        EXPECT_THAT(row.error.second, AllOf(HasSubstr(row.message), SizeIs(testing::Lt(500)))) << row.name;
    }
    EXPECT_EQ(client.ask("ReadinessIntent")["code"], 4);
    EXPECT_EQ(bus_.process(), process);
}

TEST_F(IntentsServiceTest, ListsTheNineAndFindsThemByTheirPhrases) {
    install(kBerlin);
    Client client;
    const auto intents = client.Intents();
    EXPECT_EQ(intents.size(), 9U);
    for (const auto& intent : intents) {
        const std::string& className = std::get<0>(intent);
        EXPECT_NE(intentRouteNamed(className), nullptr) << className;
        EXPECT_FALSE(std::get<1>(intent).empty()) << className;
        EXPECT_EQ(client.Recognize(std::get<2>(intent).at(0)), className);
    }
}

// Once a zone that was changed under a running service was not seen.
TEST_F(IntentsServiceTest, SeesStoreAndZoneAsTheyAreNow) {
    const std::filesystem::path zone = folder_.path() / "localtime";
    install("", "/usr/bin/env TZ=:" + zone.string() + " ");
    Client client;
    nlohmann::json bedtimes;
    for (const std::string name : {"Europe/Berlin", "Asia/Tokyo", "Pacific/Honolulu"}) {
        std::filesystem::copy_file("/usr/share/zoneinfo/" + name, zone,
                                   std::filesystem::copy_options::overwrite_existing);
        bedtimes.push_back(client.ask("LatestBedtimeIntent"));
        EXPECT_EQ(bedtimes.back(), asks("LatestBedtimeIntent", name)[0]) << name;
    }
    EXPECT_NE(bedtimes[0], bedtimes[1]);
    const std::uint32_t process = bus_.process();
    writeFile(std::filesystem::path(served()) / "group.kestrovan.Lunabrook.plist", "rubbish");
    EXPECT_EQ(client.ask("LatestBedtimeIntent")["response"], "No Data");
    EXPECT_EQ(bus_.process(), process);
}

TEST_F(IntentsServiceTest, SaysWhyItCannotServe) {
    const std::string taken = serviceWith(kBerlin);
    const auto owner = sdbus::createSessionBusConnection(kIntentsServiceName);
    struct Row {
        const char* name;
        std::string command;
        int status;
        const char* reason;
    };
    const Row rows[] = {
        {"no_bus", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent " + taken, 1, "no session bus"},
        {"taken", taken, 1, "another program"},
        {"unknown_zone", serviceWith("--time-zone Mars"), 2, "Mars"},
        {"unknown_option", serviceWith("--idle"), 2, "--idle"},
        {"negative", serviceWith("--idle-seconds=-1"), 2, "0 to 86400"},
        {"no_number", serviceWith("--idle-seconds nan"), 2, "0 to 86400"},
    };
    for (const Row& row : rows) {
        const Ended ended = run(row.command + " 2>&1");
        EXPECT_EQ(ended.status, row.status) << row.name;
        EXPECT_THAT(ended.output, testing::StartsWith("lunabrook-intents: ")) << row.name;
        EXPECT_THAT(ended.output, HasSubstr(row.reason)) << row.name;
        EXPECT_EQ(ended.output.find('\n'), ended.output.size() - 1) << row.name;
    }
}

TEST_F(IntentsServiceTest, LeavesCleanlyWhenToldTo) {
    for (const int signal : {SIGTERM, SIGINT}) {
        auto ended = std::async(std::launch::async, run, "exec " + serviceWith(kBerlin) + " 2>&1");
        ASSERT_TRUE(bus_.isServed(true));
        kill(static_cast<pid_t>(bus_.process()), signal);
        EXPECT_TRUE(bus_.isServed(false));
        const Ended end = ended.get();
        EXPECT_EQ(end.status, 0);
        EXPECT_EQ(end.output, "");
    }
}

}  // namespace
}  // namespace lunabrook
