#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace Terminal {

/// Runs `act` on the next window of type `Window` that waits for the user, from within its event loop.
template <typename Window>
void whenOpen(std::function<void(Window *)> act)
{
    auto *const poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, act = std::move(act)] {
        QWidget *const open = QApplication::activePopupWidget() != nullptr
                                  ? QApplication::activePopupWidget()
                                  : QApplication::activeModalWidget();
        if (auto *const window = qobject_cast<Window *>(open); window != nullptr && window->isVisible()) {
            poll->stop();
            poll->deleteLater();
            act(window);
        }
    });
    poll->start(5);
}

} // namespace Terminal
