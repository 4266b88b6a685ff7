// The voice-assistant service over each of its roads, with clients that keep to the protocol and clients that do not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <future>

#include "support/shell.h"
#include "support/shipped_languages.h"
#include "support/test_device.h"
#include "wyoming_client.h"

namespace lunabrook {
namespace {

using nlohmann::json;
using test::Client;
using test::Event;
using test::Service;
using test::shell;
using test::writeFile;
using testing::HasSubstr;

constexpr const char* kAsleep = "Today you slept 7 hours 35 minutes. You have a sleep debt of 1.9%.";
constexpr const char* kSorry = "-Sorry, I have no answer to that.";
constexpr const char* kQuestion = R"({"type":"transcript","data":{"text":"How long did I sleep?"}})"
                                  "\n";

class WyomingService : public testing::Test {
protected:
    WyomingService() { shell("'" LUNABROOK_PROGRAM "'" + device_ + " demo"); }

    std::string command(const std::string& options) const {
        return "'" LUNABROOK_WYOMING_PROGRAM "'" + device_ + " " + options;
    }
    std::string tcp() const { return command("--uri tcp://127.0.0.1:0"); }
    std::string inFolder(const char* name) const { return folder_.path() / name; }

    test::TemporaryFolder folder_;
    std::string device_ =
        " --now 2026-06-10T08:30:00+02:00 --time-zone Europe/Berlin --locale en_GB --language en"
        " --preferences '" +
        inFolder("preferences") + "'";
};

void expectConversation(const std::string& uri) {
    Client client(uri);
    const auto info = client.ask({.type = "describe"});
    ASSERT_TRUE(info) << uri;
    EXPECT_EQ(info->type, "info");
    for (const char* other : {"asr", "tts", "intent", "wake", "mic", "snd"}) {
        EXPECT_EQ(info->data.at(other), json::array()) << other;
    }
    const json& program = info->data.at("handle").at(0);
    for (const json& described : {program, program.at("models").at(0)}) {
        EXPECT_TRUE(described.at("name").is_string() && described.at("description").is_string() &&
                    described.at("version").is_string() && described.at("installed").get<bool>() &&
                    described.at("attribution").at("name").is_string() &&
                    described.at("attribution").at("url").is_string())
            << described;
    }
    EXPECT_EQ(program.at("models").at(0).at("languages"), json(test::shippedLanguages()));
    EXPECT_FALSE(program.at("supports_handled_streaming").get<bool>());
    EXPECT_FALSE(program.at("supports_home_control").get<bool>());

    const json context{{"id", "\u00E9"}, {"n", {1, nullptr}}};
    client.send("{\"type\":\"audio-chunk\",\"payload_length\":3}\n\n{\n");
    const auto handled =
        client.ask({.type = "transcript", .data = {{"text", "How long did I sleep?"}, {"context", context}}});
    ASSERT_TRUE(handled);
    EXPECT_EQ(handled->type, "handled");
    EXPECT_EQ(handled->data, json({{"text", kAsleep}, {"context", context}}));
    EXPECT_EQ(client.say("Wie fit bin ich heute?", "de"), "Tagesform: gut.");
    EXPECT_EQ(client.say("今日のコンディションは？", "ja-JP"), "今日のコンディション: 良い.");
    EXPECT_EQ(client.say("Turn off the kitchen lights"), kSorry);
    EXPECT_EQ(client.say(""), kSorry);
    const auto pong = client.ask({.type = "ping", .data = {{"text", "are you there?"}}});
    ASSERT_TRUE(pong);
    EXPECT_EQ(pong->type + pong->data.dump(), "pong{\"text\":\"are you there?\"}");
    client.endInput();
    EXPECT_FALSE(client.receive());
}

TEST_F(WyomingService, ConversesOverTcpAndAUnixSocket) {
    Service tcpService(tcp());
    expectConversation(tcpService.uri());
    expectConversation(tcpService.uri());
    EXPECT_EQ(tcpService.stop(), 0);
    const std::string path = inFolder("socket");
    Service unixService(command("--uri unix://" + path));
    struct stat file {};
    ASSERT_EQ(stat(path.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 0777, 0600U);
    expectConversation(unixService.uri());
    EXPECT_EQ(unixService.stop(), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(WyomingService, ConversesOnStandardInputAndIsSilentOnItsEnd) {
    writeFile(inFolder("events"), kQuestion + std::string(R"({"type":"synthesize"})") + "\n");
    const auto ended = shell(command("<" + inFolder("events")));
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "{\"data_length\":77,\"type\":\"handled\",\"version\":\"" LUNABROOK_VERSION
                            "\"}\n{\"text\":\"" +
                                std::string(kAsleep) + "\"}");
}

TEST_F(WyomingService, RefusesWhatIsNoEventAndLivesOn) {
    Service service(tcp());
    Client patient(service.uri());
    struct Row {
        std::string bytes;
        const char* code;
    };
    const Row rows[] = {
        {"GET / HTTP/1.1\r\n\r\n", "no-event"},
        {"{\"type\":\"transcript\",\"da", "no-event"},
        {"{\"type\":\"transcript\",\"data_length\":30}\n{\"text\":", "no-event"},
        {"{\"type\":\"transcript\",\"payload_length\":30}\nx", "no-event"},
        {std::string(1'000'000, 'x'), "no-event"},
        {"{\"type\":\"transcript\",\"data_length\":65537}\n" + std::string(65537, ' '), "no-event"},
        {"{\"type\":\"audio-chunk\",\"payload_length\":1048577}\n" + std::string(1048577, ' '), "no-event"},
        {"{\"type\":\"transcript\",\"data\":{\"text\":null}}\n", "no-text"},
    };
    for (const Row& row : rows) {
        Client client(service.uri());
        client.send(kQuestion + row.bytes);
        client.endInput();
        const auto first = client.receive();
        const auto second = client.receive();
        ASSERT_TRUE(first && second) << row.bytes.substr(0, 60);
        EXPECT_EQ(first->type, "handled");
        EXPECT_EQ(second->type + " " + second->data.value("code", ""), std::string("error ") + row.code);
        EXPECT_NE(second->data.value("text", ""), "");
        EXPECT_FALSE(client.receive()) << "still open after " << row.bytes.substr(0, 60);
    }
    EXPECT_EQ(patient.say("How long did I sleep?"), kAsleep);
    EXPECT_EQ(service.stop(), 0);
}

// Also where whoever starts it ignores the ends of its children, as some supervisors do.
TEST_F(WyomingService, AnswersTwoHundredQuestionsEightAtATime) {
    Service service("env --ignore-signal=CHLD " + tcp());
    std::vector<std::future<int>> clients;
    for (int client = 0; client < 8; ++client) {
        clients.push_back(std::async(std::launch::async, [&service] {
            int answered = 0;
            for (int question = 0; question < 25; ++question) {
                answered += Client(service.uri()).say("How long did I sleep?") == kAsleep ? 1 : 0;
            }
            return answered;
        }));
    }
    for (auto& client : clients) {
        EXPECT_EQ(client.get(), 25);
    }
}

TEST_F(WyomingService, LetsAThirtyThirdClientWaitAndStopsWithAllOfThem) {
    Service service(tcp());
    const Event ping{.type = "ping", .data = {{"text", "?"}}};
    std::vector<Client> clients;
    for (int i = 0; i < 32; ++i) {
        clients.emplace_back(service.uri());
        ASSERT_TRUE(clients.back().ask(ping)) << i;
    }
    Client late(service.uri());
    late.send(wyoming::bytesOfEvent(ping));
    EXPECT_FALSE(late.hasInput(100));
    clients.pop_back();
    EXPECT_TRUE(late.receive());
    EXPECT_EQ(service.stop(), 0);
    EXPECT_FALSE(late.receive());
    EXPECT_FALSE(clients.front().receive());
}

TEST_F(WyomingService, EndsAConnectionThatSaysNothingMore) {
    Service service(tcp() + " --idle-seconds 0.2");
    EXPECT_FALSE(Client(service.uri()).receive());
    Client half(service.uri());
    half.send("{\"type\":\"transcript\",\"data_length\":30}\n{\"text\":");
    const auto error = half.receive();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->type, "error");
    EXPECT_FALSE(half.receive());
}

// Times of day tell locales apart: 21:51, 9:51 PM, 21.51.
TEST_F(WyomingService, SpeaksTheLanguageOfTheSentence) {
    std::filesystem::create_directory(inFolder("bundle"));
    std::filesystem::copy(LUNABROOK_RESOURCES "/Intents.json", inFolder("bundle"));
    std::filesystem::copy(LUNABROOK_RESOURCES "/en.lproj", inFolder("bundle/en.lproj"));
    for (const std::string language : {"da", "de", "es-US", "tlh"}) {
        writeFile(folder_.path() / "bundle" / (language + ".lproj") / "Localizable.strings",
                  "\"Try to be in bed by %@\" = \"" + language + " %@\"; \"Sorry, I have no answer to that.\" = \"" +
                      language + "?\";");
    }
    Service service(tcp() + " --bundle " + inFolder("bundle"));
    Client client(service.uri());
    const auto info = client.ask({.type = "describe"});
    ASSERT_TRUE(info);
    EXPECT_EQ(info->data["handle"][0]["models"][0]["languages"], json({"da", "de", "en", "es-US", "tlh"}));
    const std::pair<std::string, const char*> rows[] = {
        {"", "Try to be in bed by 21:51"},
        {"en", "Try to be in bed by 21:51"},
        {"en-US", "Try to be in bed by 21:51"},
        {"de", "de 21:51"},
        {"de-AT", "de 21:51"},
        {"da", "da 21.51"},
        {"es-US", "es-US 9:51\u202Fp.\u00A0m."},
        {"fr", "Try to be in bed by 21:51"},
        {"tlh", "tlh 21:51"},
        {"../de", "Try to be in bed by 21:51"},
    };
    for (const auto& [language, text] : rows) {
        EXPECT_EQ(client.say("When should I go to bed?", language), text) << language;
    }
    EXPECT_EQ(client.say("Guten Appetit", "de"), "-de?");
}

TEST_F(WyomingService, SeesTheStoreAsItIsNowAndTellsItsFaults) {
    Service service(tcp());
    Client client(service.uri());
    EXPECT_EQ(client.say("How long did I sleep?"), kAsleep);
    writeFile(inFolder("preferences/group.kestrovan.Lunabrook.plist"), "rubbish");
    EXPECT_EQ(client.say("How long did I sleep?"), "No Data");
    EXPECT_THAT(service.nextError(), HasSubstr("group.kestrovan.Lunabrook.plist"));
}

TEST_F(WyomingService, TakesAStaleSocketsPlaceAndNoOtherFiles) {
    const std::string path = inFolder("socket");
    const std::string listens = command("--uri unix://" + path + " 2>&1");
    shell("python3 -c 'import socket; socket.socket(socket.AF_UNIX).bind(\"" + path + "\")'");
    ASSERT_TRUE(std::filesystem::is_socket(path));
    Service service(listens.substr(0, listens.rfind(' ')));
    EXPECT_EQ(Client(service.uri()).say("How long did I sleep?"), kAsleep);
    EXPECT_EQ(shell(listens).status, 1);  // somebody listens there
    EXPECT_EQ(Client(service.uri()).say("How long did I sleep?"), kAsleep);
    std::filesystem::rename(path, path + "2");
    writeFile(path, "somebody's");
    EXPECT_EQ(service.stop(), 0);
    const auto refused = shell(listens);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("cannot listen on unix://" + path));
    EXPECT_EQ(test::readFile(path), "somebody's");
}

TEST_F(WyomingService, SaysWhatIsWrongWithACall) {
    for (const char* uri : {"", "tcp://", "tcp://127.0.0.1", "tcp://127.0.0.1:", "tcp://127.0.0.1:65536",
                            "tcp://127.0.0.1:80a", "tcp://:80", "tcp://example.org:80", "tcp://::1:80",
                            "tcp://[127.0.0.1]:80", "unix://", "http://127.0.0.1:80"}) {
        const auto ended = shell(command("--uri '" + std::string(uri) + "' 2>&1 </dev/null"));
        EXPECT_EQ(ended.status, 2) << uri;
        EXPECT_THAT(ended.output, HasSubstr("\"" + std::string(uri) + "\"; say one like"));
    }
    for (const char* options : {"--idle-seconds 0", "--idle-seconds nan", "--time-zone Mars", "--nonsense", "extra"}) {
        EXPECT_EQ(shell(command(options + std::string(" 2>&1 </dev/null"))).status, 2) << options;
    }
    for (const char* uri : {"tcp://localhost:0", "tcp://0.0.0.0:0"}) {
        Service service(command("--uri " + std::string(uri)));
        EXPECT_EQ(Client(service.uri()).say("How long did I sleep?"), kAsleep) << uri;
    }
}

// The way the installed units start it.
TEST_F(WyomingService, IsStartedForAConnection) {
    const std::string path = inFolder("socket");
    Service listener("systemd-socket-activate --accept --inetd -l '" + path + "' " + command(""));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Client("unix://" + path).say("How long did I sleep?"), kAsleep);
    }
}

}  // namespace
}  // namespace lunabrook
