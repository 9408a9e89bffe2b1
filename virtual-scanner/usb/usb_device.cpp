// SPDX-License-Identifier: GPL-3.0-or-later
#include "usb_device.h"

#include "usbnode.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <linux/ioctl.h>
#include <linux/usbdevice_fs.h>
#include <thread>

namespace fs = std::filesystem;

namespace vscan {

const char* const preloadedVariable = "VSCAN_PRELOADED";

namespace {

constexpr const char* preloadLibrary = "libumockdev-preload.so.0";
constexpr int devicesPerBus = 127;
constexpr int busses = 255;
constexpr size_t setupLength = 8;
constexpr size_t longestFolder = 50; // 107 less what the testbed adds for its sockets
constexpr int closingTries = 8;      // for a claim of a client that has just closed the device
constexpr int closingMs = 4;

// What one ioctl is answered with.
struct Result
{
    long value = 0;
    int error = 0;
};

Result failed(int error)
{
    return {-1, error};
}

// The testbed takes its place from the environment only.
GHandle<UMockdevTestbed> newTestbed(const std::string& folder)
{
    const char* set = std::getenv("TMPDIR");
    const std::string former = set ? set : "";
    if (folder.size() <= longestFolder)
        setenv("TMPDIR", folder.c_str(), 1);
    GHandle<UMockdevTestbed> testbed(umockdev_testbed_new());
    if (set)
        setenv("TMPDIR", former.c_str(), 1);
    else
        unsetenv("TMPDIR");
    return testbed;
}

// The memory that a request's argument points to in the client; written back when it completes.
GHandle<UMockdevIoctlData> resolve(UMockdevIoctlData* data, size_t offset, size_t length)
{
    return GHandle<UMockdevIoctlData>(umockdev_ioctl_data_resolve(data, offset, length, nullptr));
}

template <class T>
T* as(const GHandle<UMockdevIoctlData>& data)
{
    return reinterpret_cast<T*>(data.get()->data);
}

} // namespace

class UsbDevice::Testbed
{
public:
    Testbed(CommandChannel& channel, UsbIdentity identity, const std::string& folder,
            std::function<bool()> refused)
        : m_channel(channel), m_identity(std::move(identity)), m_refused(std::move(refused)),
          m_testbed(newTestbed(folder)), m_handler(umockdev_ioctl_base_new())
    {
        g_signal_connect(m_handler.get(), "handle-ioctl", G_CALLBACK(onIoctl), this);
    }
    ~Testbed()
    {
        unplug();
        g_signal_handlers_disconnect_by_data(m_handler.get(), this);
        m_testbed = {}; // ends its thread
        stopTimer();
    }

    bool plug();
    void unplug();
    void wake();
    bool claimed() const;

private:
    using Client = UMockdevIoctlClient;
    struct Retry;
    using NodeOf = std::map<std::string, UsbNode>;

    static gboolean onIoctl(UMockdevIoctlBase*, Client* client, gpointer self);
    static gboolean onTimer(gpointer self);
    static gboolean onRetry(gpointer retry);
    void handle(Client* client, int triesLeft);
    bool heldByOther(const UsbNode& node, Client* client) const;
    Result answer(UsbNode& node, Client* client);
    Result submit(UsbNode& node, Client* client);
    Result submitControl(UsbNode& node, Urb urb);
    Result reap(UsbNode& node, Client* client);
    Result claim(UsbNode& node, Client* client);
    Result driverRequest(Client* client);
    Result detachDriver();
    void pump(UsbNode& node);
    void stopTimer();
    std::string rootFolder() const;

    CommandChannel& m_channel;
    const UsbIdentity m_identity;
    const std::function<bool()> m_refused;
    GHandle<UMockdevTestbed> m_testbed;
    GHandle<UMockdevIoctlBase> m_handler;
    UsbAddress m_address;
    int m_plugged = 0; // how often

    mutable std::recursive_mutex m_mutex; // for all below; never held while the testbed itself is called
    NodeOf m_nodes;                    // by device file; old ones stay, they answer "no such device" for ever
    UsbNode* m_node = nullptr;         // the one that is plugged in
    GMainContext* m_context = nullptr; // of the testbed's thread
    GSource* m_timer = nullptr;
};

std::string UsbDevice::Testbed::rootFolder() const
{
    gchar* folder = umockdev_testbed_get_root_dir(m_testbed.get());
    const std::string root = folder;
    g_free(folder);
    return root;
}

// The order matters: the "add" event goes out with the record, and a client that is quick must then find the
// device file with its requests already answered.
bool UsbDevice::Testbed::plug()
{
    if (m_node || m_plugged >= busses * devicesPerBus)
        return m_node;
    m_address = {1 + m_plugged / devicesPerBus, 1 + m_plugged % devicesPerBus};
    ++m_plugged;
    const std::string root = rootFolder();
    const std::string file = root + m_address.node();
    std::string flatName = m_address.node().substr(std::string("/dev/").size());
    std::replace(flatName.begin(), flatName.end(), '/', '_');
    std::error_code ignored;
    fs::create_directories(fs::path(file).parent_path(), ignored);
    fs::create_directories(root + "/dev/.node", ignored);
    fs::create_symlink("189:" + std::to_string(m_address.minor()), root + "/dev/.node/" + flatName, ignored);
    {
        const std::lock_guard lock(m_mutex);
        UsbNode& node = m_nodes[m_address.node()];
        if (!node.create(file)) {
            std::fprintf(stderr, "vscan: %s: %s\n", file.c_str(), std::strerror(errno));
            return false;
        }
        m_node = &node;
    }
    GError* error = nullptr;
    if (umockdev_testbed_attach_ioctl(m_testbed.get(), m_address.node().c_str(), m_handler.get(), &error) &&
        umockdev_testbed_add_from_string(m_testbed.get(), deviceRecord(m_identity, m_address).c_str(),
                                         &error))
        return true;
    std::fprintf(stderr, "vscan: cannot make the USB device: %s\n",
                 error ? error->message : "no reason given");
    g_clear_error(&error);
    const std::lock_guard lock(m_mutex);
    m_node->die();
    m_node = nullptr;
    return false;
}

void UsbDevice::Testbed::unplug()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_node)
            return;
        m_node->die();
        m_node = nullptr;
        m_channel.powerOff();
    }
    const std::string root = rootFolder();
    const std::string syspath = std::string("/sys") + usbDevicePath;
    ::unlink((root + m_address.node()).c_str());
    umockdev_testbed_uevent(m_testbed.get(), syspath.c_str(), "remove");
    umockdev_testbed_remove_device(m_testbed.get(), syspath.c_str());
}

void UsbDevice::Testbed::wake()
{
    const std::lock_guard lock(m_mutex);
    if (m_node)
        pump(*m_node);
}

bool UsbDevice::Testbed::claimed() const
{
    for (int tries = closingTries;; --tries) {
        {
            const std::lock_guard lock(m_mutex);
            if (!m_node || !m_node->claimed())
                return false;
        }
        if (tries == 0)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(closingMs)); // as in handle()
    }
}

void UsbDevice::Testbed::stopTimer()
{
    if (!m_timer)
        return;
    g_source_destroy(m_timer);
    g_source_unref(m_timer);
    m_timer = nullptr;
}

gboolean UsbDevice::Testbed::onTimer(gpointer self)
{
    auto* testbed = static_cast<Testbed*>(self);
    const std::lock_guard lock(testbed->m_mutex);
    testbed->stopTimer();
    testbed->wake();
    return G_SOURCE_REMOVE;
}

// Hands out what is due and comes again for what is held back.
void UsbDevice::Testbed::pump(UsbNode& node)
{
    using namespace std::chrono;
    node.pump(m_channel);
    const auto due = node.nextDue(m_channel);
    stopTimer();
    if (!due)
        return;
    const auto wait = duration_cast<milliseconds>(*due - CommandChannel::Clock::now()).count() + 1;
    m_timer = g_timeout_source_new(static_cast<guint>(std::max<long long>(1, wait)));
    g_source_set_callback(m_timer, onTimer, this, nullptr);
    g_source_attach(m_timer, m_context);
}

gboolean UsbDevice::Testbed::onIoctl(UMockdevIoctlBase*, Client* client, gpointer self)
{
    auto* testbed = static_cast<Testbed*>(self);
    const std::lock_guard lock(testbed->m_mutex);
    testbed->m_context = g_main_context_get_thread_default();
    testbed->handle(client, closingTries);
    return TRUE;
}

struct UsbDevice::Testbed::Retry
{
    Testbed* testbed;
    GHandle<Client> client;
    int triesLeft;
};

gboolean UsbDevice::Testbed::onRetry(gpointer retry)
{
    auto* again = static_cast<Retry*>(retry);
    const std::lock_guard lock(again->testbed->m_mutex);
    again->testbed->handle(again->client.get(), again->triesLeft);
    return G_SOURCE_REMOVE;
}

// Whether the request needs the interface while another client has it.
bool UsbDevice::Testbed::heldByOther(const UsbNode& node, Client* client) const
{
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    return (request == USBDEVFS_SUBMITURB || request == USBDEVFS_CLAIMINTERFACE ||
            request == USBDEVFS_DISCONNECT_CLAIM) &&
           node.claimedByOther(client);
}

void UsbDevice::Testbed::handle(Client* client, int triesLeft)
{
    const auto node = m_nodes.find(umockdev_ioctl_client_get_devnode(client));
    if (node != m_nodes.end() && triesLeft > 0 && heldByOther(node->second, client)) {
        // Its owner may have closed it a moment ago, which is heard of only now.
        auto* retry =
            new Retry{this, GHandle<Client>(static_cast<Client*>(g_object_ref(client))), triesLeft - 1};
        GSource* source = g_timeout_source_new(closingMs);
        g_source_set_callback(source, onRetry, retry,
                              [](gpointer data) { delete static_cast<Retry*>(data); });
        g_source_attach(source, m_context);
        g_source_unref(source);
        return;
    }
    const Result result = node == m_nodes.end() ? failed(ENODEV) : answer(node->second, client);
    umockdev_ioctl_client_complete(client, result.value, result.error);
    // Only now: a transfer of this very request must not be done before the request is.
    if (node != m_nodes.end() && node->second.alive())
        pump(node->second);
}

Result UsbDevice::Testbed::answer(UsbNode& node, Client* client)
{
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
    if (request == USBDEVFS_REAPURB || request == USBDEVFS_REAPURBNDELAY)
        return reap(node, client);
    if (!node.alive())
        return failed(ENODEV);
    switch (request) {
    case USBDEVFS_GET_CAPABILITIES: {
        const auto capabilities = resolve(argument, 0, sizeof(uint32_t));
        *as<uint32_t>(capabilities) = USBDEVFS_CAP_BULK_CONTINUATION | USBDEVFS_CAP_NO_PACKET_SIZE_LIM |
                                      USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
        return {};
    }
    case USBDEVFS_SUBMITURB:
        return submit(node, client);
    case USBDEVFS_DISCARDURB:
        return node.discard(client, *reinterpret_cast<unsigned long*>(argument->data)) ? Result()
                                                                                       : failed(EINVAL);
    case USBDEVFS_CLAIMINTERFACE:
        return claim(node, client);
    case USBDEVFS_DISCONNECT_CLAIM: {
        const Result detached = detachDriver();
        return detached.error && detached.error != ENODATA ? detached : claim(node, client);
    }
    case USBDEVFS_RELEASEINTERFACE:
        return node.release(client) ? Result() : failed(EINVAL);
    case USBDEVFS_GETDRIVER:
    case USBDEVFS_IOCTL:
        return driverRequest(client);
    case USBDEVFS_SETCONFIGURATION:
    case USBDEVFS_SETINTERFACE:
    case USBDEVFS_CLEAR_HALT:
    case USBDEVFS_RESETEP:
    case USBDEVFS_RESET:
        return {};
    default:
        return failed(ENOTTY);
    }
}

Result UsbDevice::Testbed::claim(UsbNode& node, Client* client)
{
    if (m_channel.claimBusy() || m_channel.driver() != KernelDriver::None || m_refused() ||
        !node.claim(client))
        return failed(EBUSY);
    return {};
}

Result UsbDevice::Testbed::driverRequest(Client* client)
{
    UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
    if (umockdev_ioctl_client_get_request(client) == USBDEVFS_GETDRIVER) {
        if (m_channel.driver() == KernelDriver::None)
            return failed(ENODATA);
        const auto answer = resolve(argument, 0, sizeof(usbdevfs_getdriver));
        std::strcpy(as<usbdevfs_getdriver>(answer)->driver, "usbscanner");
        return {};
    }
    const auto command = resolve(argument, 0, sizeof(usbdevfs_ioctl));
    const auto code = static_cast<unsigned>(as<usbdevfs_ioctl>(command)->ioctl_code);
    if (code == USBDEVFS_DISCONNECT)
        return detachDriver();
    if (code != USBDEVFS_CONNECT)
        return failed(ENOTTY);
    return {}; // nothing binds by itself
}

Result UsbDevice::Testbed::detachDriver()
{
    if (m_channel.driver() == KernelDriver::None)
        return failed(ENODATA);
    if (m_channel.driver() == KernelDriver::Stuck)
        return failed(EBUSY);
    m_channel.setDriver(KernelDriver::None);
    return {};
}

Result UsbDevice::Testbed::submit(UsbNode& node, Client* client)
{
    Urb urb;
    urb.client = ClientHandle(client);
    urb.data = resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(usbdevfs_urb));
    if (!urb.data)
        return failed(EFAULT);
    const auto* asked = as<usbdevfs_urb>(urb.data);
    urb.endpoint = asked->endpoint;
    urb.length = static_cast<size_t>(std::max(0, asked->buffer_length));
    const bool control = asked->type == USBDEVFS_URB_TYPE_CONTROL;
    if (urb.length > 0)
        urb.buffer = resolve(urb.data.get(), offsetof(usbdevfs_urb, buffer), urb.length);
    if (urb.length > 0 && !urb.buffer)
        return failed(EFAULT);
    if (control)
        return submitControl(node, std::move(urb));
    if (!endpoint::exists(urb.endpoint))
        return failed(ENOENT);
    const Result held = claim(node, client); // the kernel claims by itself for who forgot it
    if (held.error)
        return held;
    if (urb.endpoint != endpoint::commandOut) {
        node.submit(std::move(urb));
        return {};
    }
    const size_t length = urb.length;
    if (m_channel.takeStall(urb.endpoint)) {
        node.submitDone(std::move(urb), -EPIPE, 0);
        return {};
    }
    const Bytes frame = length ? Bytes(urb.buffer.get()->data, urb.buffer.get()->data + length) : Bytes();
    node.submitDone(std::move(urb), 0, length);
    m_channel.receive(frame);
    return {};
}

Result UsbDevice::Testbed::submitControl(UsbNode& node, Urb urb)
{
    if (urb.length < setupLength)
        return failed(EINVAL);
    urb.headLength = setupLength;
    urb.length -= setupLength;
    const std::optional<Bytes> reply =
        controlReply(m_identity, Bytes(urb.buffer.get()->data, urb.buffer.get()->data + setupLength));
    if (!reply) {
        node.submitDone(std::move(urb), -EPIPE, 0);
        return {};
    }
    urb.received = *reply;
    urb.received.resize(std::min(urb.received.size(), urb.length));
    const size_t length = urb.received.size();
    node.submitDone(std::move(urb), 0, length);
    return {};
}

Result UsbDevice::Testbed::reap(UsbNode& node, Client* client)
{
    const GHandle<UMockdevIoctlData> done = node.reap(client);
    if (!done)
        return failed(node.alive() ? EAGAIN : ENODEV);
    const auto pointer = resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(void*));
    if (!pointer || !umockdev_ioctl_data_set_ptr(pointer.get(), 0, done.get()))
        return failed(EFAULT);
    return {};
}

UsbDevice::UsbDevice(CommandChannel& channel, UsbIdentity identity, const std::string& folder,
                     std::function<bool()> refused)
    : m_testbed(std::make_unique<Testbed>(channel, std::move(identity), folder, std::move(refused)))
{
}

UsbDevice::~UsbDevice() = default;

bool UsbDevice::plug()
{
    return m_testbed->plug();
}

void UsbDevice::unplug()
{
    m_testbed->unplug();
}

void UsbDevice::wake()
{
    m_testbed->wake();
}

bool UsbDevice::claimed() const
{
    return m_testbed->claimed();
}

void preloadSelf(char** argv, std::string& error)
{
    if (std::getenv(preloadedVariable))
        return;
    const char* others = std::getenv("LD_PRELOAD");
    std::string preload = preloadLibrary;
    if (others && *others)
        preload += std::string(":") + others;
    setenv("LD_PRELOAD", preload.c_str(), 1);
    setenv(preloadedVariable, "1", 1);
#ifdef __SANITIZE_ADDRESS__ // its runtime wants to be the first library, which it cannot be here
    const char* options = std::getenv("ASAN_OPTIONS");
    setenv("ASAN_OPTIONS", (std::string(options ? options : "") + ":verify_asan_link_order=0").c_str(), 1);
#endif
    execv("/proc/self/exe", argv);
    error = std::string("cannot start again: ") + std::strerror(errno);
}

std::vector<std::pair<std::string, std::string>> usbEnvironment()
{
    std::vector<std::pair<std::string, std::string>> variables;
    for (const char* name : {"LD_PRELOAD", "UMOCKDEV_DIR"}) {
        if (const char* value = std::getenv(name))
            variables.emplace_back(name, value);
    }
    return variables;
}

} // namespace vscan
