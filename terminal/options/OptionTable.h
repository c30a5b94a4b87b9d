#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace Terminal {

struct TerminalOptions;

/// Reads the text of a value into the options; returns what is allowed when it is not.
using TakeOption = std::function<QString(const QString &value, TerminalOptions *options)>;

/// The text of a value that TakeOption reads.
using OptionWord = std::function<QString(const TerminalOptions &options)>;

/// An option of the command line that has a value.
struct OptionRow
{
    QString name;
    QString valueName;
    QString help;
    TakeOption take;
    OptionWord word = nullptr; ///< of the options that a window remembers; none for the others
};

/// Every option that has a value, in the order of the help.
const std::vector<OptionRow> &optionTable();

/// The row of a name; null when there is none.
const OptionRow *findOption(const QString &name);

} // namespace Terminal
