#pragma once

#include "terminal/options/TerminalOptions.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/ui/KeyboardBar.h"

#include <QStringList>

#include <vector>

class QAction;
class QMenu;

namespace Terminal {

class ViewMenu;

/// The bar above the chart that says what is on it: the overlays, and the
/// window's menus. It tells what the user chooses and shows what it is told.
class OverlayBar : public KeyboardBar
{
    Q_OBJECT

public:
    /// Overlays cannot be chosen yet, see enableOverlays().
    explicit OverlayBar(const TerminalOptions &options, QWidget *parent = nullptr);

    /// Shows a menu left of that of the view; its title may change.
    void addMenu(QMenu *menu);

    /// Overlays can be chosen from now on.
    void enableOverlays();
    bool isOverlayChosen(const OverlayKind &kind) const;
    void setOverlayChosen(const OverlayKind &kind, bool chosen);
    /// How things stand with an overlay, for who points at its toggle; empty: nothing to say.
    void describeOverlay(const OverlayKind &kind, const QStringList &lines);
    /// Words of overlayKinds.
    QStringList chosenOverlays() const;

    ViewMenu *view() const { return m_view; }

Q_SIGNALS:
    void overlayToggled(const OverlayKind &kind, bool shown);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addOverlays(const QStringList &chosen);
    void addView(const TerminalOptions &options);
    QAction *addMenuButton(QMenu *menu, QAction *before);
    QAction *addToggle(bool checked);
    QAction *overlayAction(const OverlayKind &kind) const;
    void showTexts();

    std::vector<QAction *> m_overlays; ///< in the order of overlayKinds()
    ViewMenu *m_view = nullptr;
    QAction *m_viewButton = nullptr;
};

} // namespace Terminal
