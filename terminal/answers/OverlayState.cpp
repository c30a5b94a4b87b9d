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

QString drawnText(int marks, const QStringList &labels)
{
    if (!labels.isEmpty()) {
        return withoutCaption(labels.join(QStringLiteral(", ")));
    }
    return marks > 0 ? text("in view: %1").arg(marks) : text("none in view");
}

} // namespace

QString overlayStateText(const OverlayState &state, int marks, const QStringList &labels)
{
    switch (state.kind) {
    case OverlayState::Elsewhere:
        return text("not on this chart");
    case OverlayState::Waiting:
        return text("not asked yet");
    case OverlayState::Asked:
        return text("asked, no answer yet");
    case OverlayState::Empty:
        return state.otherMarkets > 0 ? text("nothing; of another market: %1").arg(state.otherMarkets)
                                      : text("nothing there");
    case OverlayState::Drawn:
        return drawnText(marks, labels);
    case OverlayState::Refused:
        return text("refused");
    case OverlayState::Wrong:
        return text("wrong answer");
    }
    return {};
}

} // namespace Terminal
