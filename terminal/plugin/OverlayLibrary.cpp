#include "terminal/plugin/OverlayLibrary.h"

#include "terminal/plugin/CombinedObject.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QLibrary>

namespace Terminal {

namespace {

Loaded<OverlayLibrary> failure(const char *source, const QString &file, const QString &reason)
{
    return Loaded<OverlayLibrary>::failure(
        QCoreApplication::translate("OverlayLibrary", source).arg(file, reason));
}

QByteArray toText(const QJsonObject &configuration)
{
    return QJsonDocument(configuration).toJson(QJsonDocument::Compact);
}

} // namespace

Loaded<OverlayLibrary> OverlayLibrary::open(const QString &file)
{
    // Qt code of the library may stay registered with the application, so it is never unloaded.
    QLibrary library(file);
    if (!library.load()) {
        return failure(QT_TRANSLATE_NOOP("OverlayLibrary", "%1: cannot be loaded as overlay library: %2"),
                       file, library.errorString());
    }
    const auto factory = reinterpret_cast<Factory>(library.resolve("CreateChartObject"));
    if (factory == nullptr) {
        return failure(QT_TRANSLATE_NOOP("OverlayLibrary", "%1: is no overlay library: %2"), file,
                       library.errorString());
    }
    OverlayLibrary loaded;
    loaded.m_factory = factory;
    loaded.m_constructCombined = reinterpret_cast<Korvane::CombinedOverlay::Constructor>(
        library.resolve(Korvane::CombinedOverlay::constructor));
    return loaded;
}

std::shared_ptr<OverlayHandle> OverlayLibrary::create(Korvane::IChartAxis &axis,
                                                      const QJsonObject &configuration) const
{
    Korvane::IChartObject *const object = m_factory(axis, toText(configuration).constData());
    return object == nullptr ? nullptr : std::make_shared<OverlayHandle>(object);
}

std::shared_ptr<OverlayHandle> OverlayLibrary::createCombined(Korvane::IChartAxis &axis,
                                                              const QJsonObject &configuration) const
{
    if (m_constructCombined == nullptr) {
        return nullptr;
    }
    const auto overlay =
        std::make_shared<CombinedObject>(m_constructCombined, axis, toText(configuration).constData());
    return std::make_shared<OverlayHandle>(
        std::shared_ptr<Korvane::IChartObject>(overlay, overlay->object()));
}

} // namespace Terminal
