#include "terminal/intake/IntakeStyle.h"
#include "tests/terminal/support/Contrast.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace Terminal {
namespace {

/// A rule of a style sheet: what it says of text and ground.
struct Rule
{
    QString selector;
    QColor text;
    QColor ground;
};

QColor colourIn(const QString &properties, const char *name)
{
    const QRegularExpression form(QStringLiteral("(?:^|[;\\s])%1: ([^;]+);").arg(QLatin1String(name)));
    return {form.match(properties).captured(1)};
}

std::vector<Rule> rulesIn(const QString &sheet)
{
    static const QRegularExpression form(QStringLiteral("([^{}]+)\\{([^}]*)\\}"));
    std::vector<Rule> rules;
    for (auto match = form.globalMatch(sheet); match.hasNext();) {
        const auto rule = match.next();
        rules.push_back({rule.captured(1).trimmed(), colourIn(rule.captured(2), "color"),
                         colourIn(rule.captured(2), "background")});
    }
    return rules;
}

TEST(IntakeStyle, HasReadableTextOnEveryFill)
{
    for (const ThemeKind kind : {ThemeKind::Light, ThemeKind::Dark}) {
        const ChartTheme theme = makeTheme(kind, RiseColour::Red);
        int checked = 0;
        for (const Rule &rule : rulesIn(intakeStyleSheet(theme))) {
            if (!rule.text.isValid() && !rule.ground.isValid()) {
                continue;
            }
            const QColor text = rule.text.isValid() ? rule.text : theme.text;
            const std::vector<QColor> grounds = rule.ground.isValid()
                                                    ? std::vector{rule.ground}
                                                    : std::vector{theme.surface, theme.background};
            for (const QColor &ground : grounds) {
                EXPECT_GE(contrast(text, ground), readableContrast)
                    << rule.selector.toStdString() << ": " << text.name().toStdString() << " on "
                    << ground.name().toStdString();
            }
            ++checked;
        }
        EXPECT_GT(checked, 10);
    }
}

TEST(IntakeStyle, WouldBeSeenWithWhiteTextOnAPaleFill)
{
    const auto rules = rulesIn(QStringLiteral("QPushButton[main=\"true\"]:enabled { color: white;"
                                              " background: #8db2ee; border-color: #8db2ee; }"));
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_LT(contrast(rules[0].text, rules[0].ground), readableContrast);
}

} // namespace
} // namespace Terminal
