#include "terminal/answers/OverlayState.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("OverlayState", source);
}

/// The strip says already what the label is of.
QString withoutCaption(const QString &label)
{
    return label.mid(label.indexOf(QLatin1Char(':')) + 1);
}

QString drawnText(const DrawnOverlay &drawn)
{
    if (!drawn.labels.isEmpty()) {
        return withoutCaption(drawn.labels.join(QStringLiteral(", ")));
    }
    return drawn.marks > 0 ? text("in view: %1").arg(drawn.marks) : text("none in view");
}

QString lateText(const QTime &since)
{
    return text("no answer since %1").arg(since.toString(QStringLiteral("HH:mm:ss")));
}

/// Of an overlay that nothing was heard of, and that shows nothing.
QString openText(const OverlayState &state, const QString &hindrance)
{
    if (!hindrance.isEmpty()) {
        return hindrance;
    }
    if (state.unansweredSince) {
        return lateText(*state.unansweredSince);
    }
    return state.kind == OverlayState::Asked ? text("asked, no answer yet") : text("not asked yet");
}

QString answeredText(const OverlayState &state, const DrawnOverlay &drawn)
{
    switch (state.kind) {
    case OverlayState::Elsewhere:
        return text("not on this chart");
    case OverlayState::Empty:
        return state.otherMarkets > 0 ? text("nothing; of another market: %1").arg(state.otherMarkets)
                                      : text("nothing there");
    case OverlayState::Waiting:
    case OverlayState::Asked:
    case OverlayState::Unheard:
    case OverlayState::Drawn:
        return drawnText(drawn);
    case OverlayState::Refused:
        return text("refused");
    case OverlayState::Wrong:
        return text("wrong answer");
    }
    return {};
}

bool isOpen(OverlayState::Kind kind)
{
    return kind == OverlayState::Waiting || kind == OverlayState::Asked;
}

} // namespace

QString overlayStateText(const OverlayState &state, const DrawnOverlay &drawn, const QString &hindrance)
{
    const bool isBare = drawn.isEmpty();
    if (isBare && (isOpen(state.kind) || (state.kind == OverlayState::Unheard && !hindrance.isEmpty()))) {
        return openText(state, hindrance);
    }
    const QString said = answeredText(state, drawn);
    return state.unansweredSince ? text("%1; %2").arg(said, lateText(*state.unansweredSince)) : said;
}

} // namespace Terminal
