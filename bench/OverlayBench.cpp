// Every benchmark of the overlays, in an application as the overlays expect one, with debug lines off.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QLoggingCategory>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
