#include "command/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <regex>

#include "command/demo_week.h"
#include "command/picture_shapes.h"
#include "platform/text/drawn_text.h"
#include "support/shell.h"
#include "support/test_device.h"

namespace lunabrook {
namespace {

using test::TestDevice;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<std::smatch> matches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    return {std::sregex_iterator(text.begin(), text.end(), expression), {}};
}

double numberAt(const std::string& text, const char* pattern, double otherwise = 0) {
    std::smatch found;
    return std::regex_search(text, found, std::regex(pattern)) ? std::stod(found[1]) : otherwise;
}

// Where each lap of a ring around 0, 0 is seen to end, in degrees from twelve o'clock: its round end reaches beyond the
// path's. 360 for a closed one; nothing for an empty ring.
std::vector<double> lapEnds(double fill) {
    constexpr double kRadius = 100;
    constexpr double kThickness = 20;
    Svg svg;
    drawRing(svg, {0, 0, kRadius, kThickness, fill, "ink", "second"});
    const std::string drawn = svg.take();
    std::vector<double> ends;
    for (const std::smatch& lap :
         matches(drawn, R"re(<(circle|path) class="lap[^>]* d?r?="[^"]*?(-?[\d.]+) ?(-?[\d.]+)?"/>)re")) {
        if (lap[1] == "circle") {
            ends.push_back(360);
            continue;
        }
        const std::string path = lap[0];
        std::smatch end;
        EXPECT_TRUE(std::regex_search(path, end, std::regex(R"re(A100 100 0 [01] 1 (-?[\d.]+) (-?[\d.]+)")re")))
            << path;
        const double angle = std::atan2(std::stod(end[1]), -std::stod(end[2])) + std::asin(kThickness / 2 / kRadius);
        const double degrees = std::fmod(angle * 180 / std::numbers::pi + 360, 360);
        ends.push_back(degrees < 0.01 ? 360 : degrees);
    }
    return ends;
}

TEST(Rings, EndWhereTheirFractionsDo) {
    const struct {
        double fill;
        std::vector<double> ends;
    } rows[] = {{0.25, {90}},      {0.5, {180}},       {0.75, {270}},    {0.98, {352.8}},   {1, {360}},
                {1.3, {360, 108}}, {1.75, {360, 270}}, {2, {360, 360}},  {7, {360, 360}},   {kInfinity, {360, 360}},
                {0, {}},           {-0.25, {}},        {-kInfinity, {}}, {std::nan(""), {}}};
    for (const auto& row : rows) {
        EXPECT_THAT(lapEnds(row.fill), testing::Pointwise(testing::DoubleNear(0.05), row.ends)) << row.fill;
    }
}

TEST(Shapes, StayWithinTheirRoom) {
    for (const double value : {-1.0, 0.0, 0.01, 2.5, 6.0, kInfinity, -kInfinity, std::nan(""), 1e300}) {
        for (const bool isMirrored : {false, true}) {
            Svg stars;
            drawStars(stars, {100, 0, 10, value, isMirrored});
            const std::string row = stars.take();
            const double full = numberAt(row, R"re(<svg .*width="([0-9.]+)")re");
            const double left = numberAt(row, R"re(<svg x="([0-9.]+)")re", 100);
            EXPECT_LE(full, widthOfStars(10)) << value;
            EXPECT_EQ(full > 0, value > 0) << value;
            EXPECT_NEAR(left, isMirrored && full > 0 ? 100 + widthOfStars(10) - full : 100, 0.011) << value;
            Svg bar;
            drawBar(bar, {100, 0, 200, 8, value, "ink", isMirrored});
            const std::string drawn = bar.take();
            const double from = numberAt(drawn, R"re(class="over" x="([0-9.]+)")re", 100);
            const double length = numberAt(drawn, R"re(class="over".* width="([0-9.]+)")re");
            EXPECT_TRUE(from >= 100 && from + length <= 300) << drawn;
        }
    }
}

TEST(Svg, EscapesTextsAndKeepsNumbersShort) {
    Svg svg;
    svg.open("g", {{"a", "\"<&>'"}, {"b", ""}, {"c", 1.0 / 3}, {"d", -0.001}, {"e", std::nan("")}, {"f", -kInfinity}});
    svg.text("t", {}, "a<b>&\"", "u", {{"x", 2}}, "</u>");
    svg.close();
    EXPECT_EQ(svg.take(),
              "<g a=\"&quot;&lt;&amp;&gt;'\" c=\"0.33\" d=\"0\" e=\"0\" f=\"0\">\n"
              "<t>a&lt;b&gt;&amp;&quot;<u x=\"2\">&lt;/u&gt;</u></t>\n"
              "</g>\n");
}

// What the picture is for a reader of XML: the names of the elements and all the text, or why it is none.
std::string readByPython(const TestDevice& device, const std::string& picture) {
    const std::string file = (device.folder() / "picture.svg").string();
    test::writeFile(file, picture);
    return test::shell(
               "python3 -c 'import sys, xml.etree.ElementTree as tree\n"
               "root = tree.parse(sys.argv[1]).getroot()\n"
               "print(*sorted({e.tag.split(\"}\")[1] for e in root.iter()}))\n"
               "print(*(\"\".join(e.itertext()) for e in root.iter() if e.tag[-4:] == \"text\"), sep=\"\\n\")' '" +
               file + "' 2>&1")
        .output;
}

// Each text ends, as far as can be known, within the card that holds it; cards lie side by side within the picture.
void expectTextsInside(const std::string& picture, int width) {
    double room = width;
    for (const std::smatch& part : matches(picture, R"(<(svg|text) ([^>]*)>([^<]*)(<tspan [^>]*>([^<]*))?)")) {
        const std::string attributes = part[2];
        if (attributes.find("viewBox") != std::string::npos) {
            continue;  // the whole, and the cut of the stars
        }
        if (part[1] == "svg") {
            room = numberAt(attributes, R"re( width="([\d.]+)")re", width);
            const double right = numberAt(attributes, R"re(^x="([\d.]+)")re") + room;
            EXPECT_LE(right, width + 0.01);
            continue;
        }
        const double size = numberAt(attributes, R"re(font-size="([\d.]+)")re");
        const auto ems = [&part](std::size_t group) {
            return 0.92 * widthInEms(std::regex_replace(part[group].str(), std::regex("&[a-z]+;"), "&"));
        };
        const double extent = size * ems(3) + numberAt(part[4], R"re(size="([0-9.]+)")re") * ems(5);
        const double x = numberAt(attributes, R"re( x="([\d.]+)")re");
        const bool endsThere = attributes.find("\"end\"") != std::string::npos;
        const bool growsRight = endsThere == (picture.find("direction=\"rtl\"") != std::string::npos);
        const bool isCentred = attributes.find("\"middle\"") != std::string::npos;
        const double left = isCentred ? x - extent / 2 : growsRight ? x : x - extent;
        EXPECT_GE(left, 0) << part[0] << " in " << room;
        EXPECT_LE(left + extent, room + 0.01) << part[0] << " in " << room;
    }
}

TEST(Picture, KeepsHostileTextsAsTextAndInside) {
    const std::string many(300, 'W');
    for (const char* language : {"en", "ar"}) {
        TestDevice device({.languages = {language},
                           .translations = {{"Sleep Rating", "<script>alert(\"1\")</script>&amp;]]>"},
                                            {"Today's Readiness", many},
                                            {"Sleep",
                                             "a\x01"
                                             "b\x1b[31m\xEF\xBF\xBE"
                                             "c"},
                                            {"HRV", many},
                                            {"bpm", many + " " + many},
                                            {"Plus", many},
                                            {"BrPM", many},
                                            {"Debt", many},
                                            {"Deep", "ü\xCC\x81\xCC\x81\xCC\x81\xCC\x81\xCC\x81\xCC\x81"},
                                            {"Time until bed", "x' onload='y"}}});
        Dictionary week = demoWeek(device);
        device.store(week);
        for (const int width : {320, 360, 599, 600, 760, 1079, 1080, 1200, 1600}) {
            Glance glance = glanceAt(device);
            glance.temperature.content->today = "\xFF\xC0\xAF" + many;
            const std::string picture = morningPicture(glance, width);
            EXPECT_THAT(
                readByPython(device, picture),
                AllOf(testing::StartsWith("circle desc g path rect style svg text title tspan\n"),
                      HasSubstr("<script>alert(\"1\")</script>&amp;]]>\n"), HasSubstr("\na\uFFFDb\uFFFD[31m\uFFFDc\n"),
                      HasSubstr("\nx' onload='y\n"), HasSubstr("\uFFFD\uFFFD\uFFFDWW"), Not(HasSubstr(many))));
            expectTextsInside(picture, width);
            EXPECT_LT(picture.size(), 30000U);
        }
    }
}

TEST(Picture, SaysTheMorningToThoseWhoListen) {
    TestDevice device;
    device.store(demoWeek(device));
    const std::string picture = morningPicture(glanceAt(device), 360);
    EXPECT_THAT(
        picture,
        HasSubstr("<title>Wednesday, Jun 10, 2026: 2 sleep rings closed. Today's sleep rating is 98%.</title>"));
    EXPECT_THAT(
        picture,
        HasSubstr("<desc>Today's Readiness is good. Sleep Fuel Rating is plus. Today's average SpO2 is 96.2%."));
    EXPECT_THAT(picture, HasSubstr("Try to be in bed by 9:51\u202FPM</desc>"));
    EXPECT_EQ(matches(picture, R"(class="lap)").size(), 6U);  // two of the four rings are closed
}

TEST(Picture, SaysQuietlyWhatIsMissing) {
    const TestDevice device;
    for (const int width : {320, 700, 1200}) {
        const std::string picture = morningPicture(glanceAt(device), width);
        EXPECT_EQ(matches(picture, R"(<text class="quiet"[^>]*>No Data<)").size(), 7U);
        EXPECT_THAT(picture, AllOf(HasSubstr("Sleep Rating: No Data.</title>"), Not(HasSubstr("class=\"lap"))));
    }
}

TEST(Picture, IsMirroredWhereTheLanguageReadsFromTheRight) {
    const auto firstCard = [](const char* language, int width) {
        TestDevice device({.languages = {language}, .translations = {{"Sleep", "s"}}});
        device.store(demoWeek(device));
        const std::string picture = morningPicture(glanceAt(device), width);
        EXPECT_EQ(picture.find(" direction=\"rtl\"") != std::string::npos, std::string_view(language) != "de")
            << language;
        EXPECT_THAT(picture, HasSubstr(std::string(" lang=\"") + language + "\" "));
        const std::size_t card = picture.find("<svg x=");
        return std::array{numberAt(picture.substr(card), R"re(x="([\d.]+)")re"),
                          numberAt(picture.substr(card), R"re(width="([\d.]+)")re"),
                          numberAt(picture.substr(card), R"re(<text [^>]*x="([\d.]+)")re")};
    };
    const auto [left, width, title] = firstCard("de", 1200);
    for (const char* language : {"ar", "he"}) {
        const auto [leftMirrored, widthMirrored, titleMirrored] = firstCard(language, 1200);
        EXPECT_NEAR(leftMirrored, 1200 - left - width, 0.01);
        EXPECT_NEAR(titleMirrored, width - title, 0.01);
    }
}

}  // namespace
}  // namespace lunabrook
