#pragma once

#include <QWidget>

#include <vector>

class QLabel;

namespace Terminal {

/// What became of the last orders and cancellations, newest news first: a line for each, which tells its
/// latest.
class OrderResults : public QWidget
{
    Q_OBJECT

public:
    static constexpr int mostLines = 3;

    enum class Tone { Plain, Good, Bad };

    explicit OrderResults(QWidget *parent = nullptr);

    /// Tells of what has this name, such as an order's client's number.
    void tell(const QString &name, const QString &text, Tone tone);
    void clear();

private:
    struct Line
    {
        QString name;
        QString text;
        Tone tone;
    };

    void showLines();

    std::vector<Line> m_lines;
    std::vector<QLabel *> m_labels;
};

} // namespace Terminal
