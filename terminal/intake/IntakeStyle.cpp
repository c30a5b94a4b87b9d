#include "terminal/intake/IntakeStyle.h"

namespace Terminal {

namespace {

/// A fill that text is readable on, as it is on what is not filled yet.
QColor between(const QColor &one, const QColor &other)
{
    return {(one.red() + other.red()) / 2, (one.green() + other.green()) / 2,
            (one.blue() + other.blue()) / 2};
}

} // namespace

QString intakeStyleSheet(const ChartTheme &theme)
{
    return QStringLiteral(
               "QDialog, #startWindow { background: %1; }"
               "QLabel, QCheckBox { color: %3; }"
               "QPushButton { color: %3; background: %6; border: 1px solid %2; border-radius: 4px;"
               "  padding: 5px 14px; }"
               "QPushButton:hover { border-color: %4; }"
               "QPushButton:focus { border: 2px solid %7; padding: 4px 13px; outline: none; }"
               "QPushButton:disabled { color: %4; background: %1; }"
               "QPushButton[main=\"true\"]:enabled { color: %9; background: %7;"
               "  border-color: %7; font-weight: bold; }"
               "QPushButton[main=\"true\"]:focus { border: 2px solid %3; }"
               "QLineEdit, QPlainTextEdit { color: %3; background: %6; border: 1px solid %2;"
               "  border-radius: 3px; padding: 3px; }"
               "QLineEdit:focus, QPlainTextEdit:focus { border-color: %7; }"
               "QListWidget { color: %3; background: %6; border: 1px solid %2; }"
               "QListWidget::item { border: none; padding: 4px 8px; }"
               "QListWidget:focus { border-color: %7; }"
               "QListWidget::item:selected { color: %3; background: %2; }"
               "QProgressBar { color: %3; background: %6; border: 1px solid %2; border-radius: 3px;"
               "  text-align: center; } QProgressBar::chunk { background: %8; }"
               "#fileSheet, #fileSheetPage { background: %1; }"
               "#fileSheet { border: 1px solid %1; } #fileSheet:focus { border-color: %7; }"
               "#fileName { font-weight: bold; }"
               "#fileRefusal, #fileWarning, #startNotice { color: %5; }"
               "#fileCaption, #intakePlaces, #wayText { color: %4; }"
               "#startTitle { font-size: 20px; font-weight: bold; }"
               "#startWay { background: %6; border: 1px solid %2; border-radius: 6px; }"
               "#wayTitle { font-size: 15px; font-weight: bold; }")
        .arg(theme.surface.name(), theme.border.name(), theme.text.name(), theme.mutedText.name(),
             theme.line.name(), theme.background.name(), theme.accent.name(),
             between(theme.accent, theme.background).name(), theme.fillText.name());
}

} // namespace Terminal
