#include "bench/support/LibraryPeers.h"

#include <array>
#include <cstdlib>
#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace Library {

namespace {

constexpr int patience = 200;             // milliseconds
constexpr useconds_t pauseInCrowd = 1000; // microseconds

bool waitFor(int descriptor)
{
    pollfd entry{descriptor, POLLIN, 0};
    return ::poll(&entry, 1, patience) > 0;
}

} // namespace

struct Client::Callbacks
{
    static void subscribed(mosquitto *, void *self, int, int, const int *, const mosquitto_property *)
    {
        static_cast<Client *>(self)->m_isSubscribed = true;
    }

    static void received(mosquitto *, void *self, const mosquitto_message *,
                         const mosquitto_property *properties)
    {
        auto *const client = static_cast<Client *>(self);
        ++client->m_received;
        char *replyPath = nullptr;
        mosquitto_property_read_string(properties, MQTT_PROP_RESPONSE_TOPIC, &replyPath, false);
        if (client->m_answerBytes > 0 && replyPath != nullptr) {
            client->publish(replyPath, std::string(static_cast<std::size_t>(client->m_answerBytes), 'a'));
        }
        free(replyPath);
    }
};

Client::Client(const std::string &socketPath, const std::string &path)
    : m_path(path),
      m_handle(mosquitto_new(nullptr, true, this), &mosquitto_destroy)
{
    mosquitto *const handle = m_handle.get();
    mosquitto_int_option(handle, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_subscribe_v5_callback_set(handle, &Callbacks::subscribed);
    mosquitto_message_v5_callback_set(handle, &Callbacks::received);
    while (mosquitto_connect_bind_v5(handle, socketPath.c_str(), 0, 0, nullptr, nullptr) !=
           MOSQ_ERR_SUCCESS) {
        ::usleep(pauseInCrowd);
    }
    mosquitto_subscribe_v5(handle, nullptr, m_path.c_str(), 0, MQTT_SUB_OPT_NO_LOCAL, nullptr);
}

Client::~Client() = default;

int Client::descriptor() const
{
    return mosquitto_socket(m_handle.get());
}

void Client::work()
{
    mosquitto_loop_read(m_handle.get(), 1);
    while (mosquitto_want_write(m_handle.get())) {
        mosquitto_loop_write(m_handle.get(), 1);
    }
}

void Client::publish(const std::string &path, const std::string &payload, const std::string &replyPath)
{
    mosquitto_property *properties = nullptr;
    if (!replyPath.empty()) {
        mosquitto_property_add_string(&properties, MQTT_PROP_RESPONSE_TOPIC, replyPath.c_str());
    }
    mosquitto_publish_v5(m_handle.get(), nullptr, path.c_str(), static_cast<int>(payload.size()),
                         payload.data(), 0, false, properties);
    mosquitto_property_free_all(&properties);
}

void workUntil(Client &client, const std::function<bool()> &condition)
{
    while (!condition()) {
        waitFor(client.descriptor());
        client.work();
    }
}

void answerAll(const std::string &socketPath, const std::string &path, int bytes, int lifeline)
{
    mosquitto_lib_init();
    Client client(socketPath, path);
    client.answerWith(bytes);
    std::array<pollfd, 2> polled{{{client.descriptor(), POLLIN, 0}, {lifeline, POLLIN, 0}}};
    while (::poll(polled.data(), polled.size(), -1) > 0 && polled[1].revents == 0) {
        client.work();
    }
}

void ask(Client &asker, const std::string &path, const std::string &question, const std::string &replyPath)
{
    const int before = asker.received();
    do {
        asker.publish(path, question, replyPath); // again where who answers has not joined yet
        while (asker.received() == before && waitFor(asker.descriptor())) {
            asker.work();
        }
    } while (asker.received() == before);
}

} // namespace Library
