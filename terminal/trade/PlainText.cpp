#include "terminal/trade/PlainText.h"

#include <QTextDocument>

#include <algorithm>

namespace Terminal {

namespace {

bool isUnseen(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

} // namespace

QString plainText(const QString &text)
{
    QString plain = text;
    std::replace_if(plain.begin(), plain.end(), isUnseen, QChar(QChar::ReplacementCharacter));
    return plain;
}

QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace Terminal
