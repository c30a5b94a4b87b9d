#include "terminal/data/SecurityList.h"

#include "terminal/data/CsvFile.h"

#include <QCoreApplication>

#include <algorithm>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("SecurityList", source);
}

bool isCode(const QByteArray &field)
{
    return !field.isEmpty() && field.size() <= 38 && std::all_of(field.begin(), field.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.';
    });
}

QString takeSecurity(const QList<QByteArray> &fields, Securities *securities)
{
    const QString code = QString::fromUtf8(fields.at(0));
    if (!isCode(fields.at(0))) {
        return text("\"%1\" is not a security code").arg(code);
    }
    if (findSecurity(*securities, code) != nullptr) {
        return text("the code %1 stands here a second time").arg(code);
    }
    const auto market = Trading::marketOfLetters(QString::fromUtf8(fields.at(1)));
    if (!market) {
        return text("the market \"%1\" is neither SH nor SZ").arg(QString::fromUtf8(fields.at(1)));
    }
    if (fields.at(2).trimmed().isEmpty()) {
        return text("the name is missing");
    }
    securities->push_back({code, *market, QString::fromUtf8(fields.at(2)).trimmed()});
    return {};
}

} // namespace

Loaded<Securities> readSecurities(const QString &path)
{
    Securities securities;
    QString error = readCsv(path, "code,market,name", [&securities](const QList<QByteArray> &fields) {
        return takeSecurity(fields, &securities);
    });
    if (error.isEmpty() && securities.empty()) {
        error = text("%1: names no security").arg(path);
    }
    return error.isEmpty() ? Loaded<Securities>(securities) : Loaded<Securities>::failure(error);
}

const Security *findSecurity(const Securities &securities, const QString &code)
{
    const auto found = std::find_if(securities.begin(), securities.end(),
                                    [&code](const Security &security) { return security.code == code; });
    return found == securities.end() ? nullptr : &*found;
}

} // namespace Terminal
