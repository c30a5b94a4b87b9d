#include "terminal/data/PriceView.h"

#include <QCoreApplication>

namespace Terminal {

QString viewTitle(PriceView view)
{
    switch (view) {
    case PriceView::Raw:
        break;
    case PriceView::Adjusted:
        return QCoreApplication::translate("PriceView", "Adjusted");
    }
    return {};
}

} // namespace Terminal
