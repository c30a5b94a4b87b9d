#include "tests/support/BusThread.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QThread>

BusThread::BusThread(const QString &address, const QByteArray &topic, Handler handler)
    : m_thread(QThread::create(
          [this, address, topic, handler = std::move(handler)] { run(address, topic, handler); }))
{
    m_thread->start();
    m_ready.acquire();
}

BusThread::~BusThread()
{
    m_thread->quit();
    m_thread->wait();
}

void BusThread::run(const QString &address, const QByteArray &topic, const Handler &handler)
{
    QEventLoop loop;
    EndPoint own(nullptr);
    bool hasJoined = false;
    QObject::connect(&own, &EndPoint::ready, &own, [&hasJoined] { hasJoined = true; });
    QObject::connect(&own, &EndPoint::messageReceived, &own,
                     [&](const QByteArray &, const QByteArray &payload, const QByteArray &replyChannel) {
                         handler(own, payload, replyChannel);
                     });
    own.subscribe("Global", topic);
    own.connect(address);
    EXPECT_TRUE(waitUntil([&hasJoined] { return hasJoined; }));
    m_ready.release();
    loop.exec();
}
