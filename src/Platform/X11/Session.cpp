#include "Platform/X11/Session.h"

#include "Platform/Threads.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <poll.h>
#include <utility>

namespace Platform::X11 {

using Clock = std::chrono::steady_clock;

struct Session::State {
    explicit State(Options options)
        : options(std::move(options))
    {
    }

    void live(); ///< The thread's life.
    void connect();
    void workUntilEnded();
    bool workOnce();
    void readEvents();
    void publish(const DesktopFacts& newFacts);
    void sleep(std::optional<Clock::time_point> until) const;
    void end();

    const Options options;
    const std::shared_ptr<EventFile> wake = std::make_shared<EventFile>();
    const EventFile ending; ///< Once raised it stays so.

    std::unique_ptr<Server> server; ///< These two are the thread's own.
    std::unique_ptr<DesktopWatch> watch;

    std::mutex lock; ///< Guards what follows.
    std::condition_variable changed;
    std::optional<Result<void>> connected; ///< None while it is being tried.
    bool isGranted = false;
    DesktopFacts facts;
    std::deque<Work> waiting;
    bool isEnding = false;
    bool isOver = false;

    std::mutex onChangeLock; ///< Guards what follows, also while it runs.
    std::function<void()> onChange;
};

void Session::State::live()
{
    connect();
    if (server)
        workUntilEnded();
    end();
}

void Session::State::connect()
{
    Result<void> result;
    if (auto connection = Connection::open(options.display); !connection) {
        result = tl::make_unexpected(connection.error());
    } else {
        (*connection)->setLimits(Clock::now() + options.patience, ending.descriptor());
        server = std::make_unique<Server>(*std::move(connection), wake);
        watch = std::make_unique<DesktopWatch>(server->connection());
        publish(watch->read());
    }
    const std::scoped_lock hold(lock);
    connected = result;
    isGranted = server
        && !(server->obstacle() && server->obstacle()->kind == Error::Kind::permissionDenied);
    changed.notify_all();
}

void Session::State::workUntilEnded()
{
    for (;;) {
        {
            const std::scoped_lock hold(lock);
            if (isEnding)
                return;
        }
        wake->lower(); // Before looking for what it was raised for.
        if (workOnce())
            continue;
        readEvents();
        const auto until = server->pool().tidy(server->connection(), Clock::now());
        xcb_flush(server->connection().xcb());
        sleep(until);
    }
}

/// Whether there was something to do.
bool Session::State::workOnce()
{
    Work work;
    {
        const std::scoped_lock hold(lock);
        if (waiting.empty())
            return false;
        work = std::move(waiting.front());
        waiting.pop_front();
    }
    server->connection().setLimits(Clock::now() + options.patience, ending.descriptor());
    work(server.get());
    return true;
}

void Session::State::readEvents()
{
    auto& connection = server->connection();
    connection.setLimits(Clock::now() + options.patience, ending.descriptor());
    bool hasChanged = false;
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.xcb())})
        hasChanged = watch->isChange(*event) || hasChanged;
    if (!hasChanged)
        return;
    const auto newFacts = watch->read();
    if (!connection.isLost())
        publish(newFacts);
}

void Session::State::publish(const DesktopFacts& newFacts)
{
    {
        const std::scoped_lock hold(lock);
        if (newFacts == facts)
            return;
        facts = newFacts;
    }
    const std::scoped_lock hold(onChangeLock);
    if (onChange)
        onChange();
}

void Session::State::sleep(std::optional<Clock::time_point> until) const
{
    const auto& connection = server->connection();
    // Of a lost connection there is nothing to come, but the socket would be readable forever.
    std::array files{
        pollfd{
            .fd = connection.isLost() ? -1 : connection.socket(), .events = POLLIN, .revents = 0},
        pollfd{.fd = wake->descriptor(), .events = POLLIN, .revents = 0},
        pollfd{.fd = ending.descriptor(), .events = POLLIN, .revents = 0}};
    int milliseconds = -1;
    if (until)
        milliseconds = static_cast<int>(std::max<std::int64_t>(
            0, std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now()).count()));
    poll(files.data(), files.size(), milliseconds);
}

void Session::State::end()
{
    watch.reset();
    server.reset();
    std::deque<Work> left;
    {
        const std::scoped_lock hold(lock);
        isOver = true;
        left.swap(waiting);
    }
    for (const auto& work : left)
        work(nullptr);
}

Result<std::unique_ptr<Session>> Session::open(const Options& options)
{
    const auto failure = [](const char* why) {
        return tl::make_unexpected(Error{.message = QString::fromLatin1(why)});
    };
    const auto state = std::make_shared<State>(options);
    std::unique_ptr<Session> session(new Session(state));
    if (!startDetachedThread([state] { state->live(); }))
        return failure("no more threads");
    std::unique_lock hold(state->lock);
    const auto isTried = [&state] { return state->connected.has_value(); };
    if (!state->changed.wait_for(hold, options.patience, isTried))
        return failure("the X server doesn't answer");
    const auto connected = *state->connected;
    hold.unlock();
    if (!connected)
        return tl::make_unexpected(connected.error());
    return session;
}

Session::Session(std::shared_ptr<State> state)
    : m_state(std::move(state))
{
}

Session::~Session()
{
    setOnChange(nullptr);
    {
        const std::scoped_lock hold(m_state->lock);
        m_state->isEnding = true;
    }
    m_state->ending.raise();
}

bool Session::isGranted() const
{
    const std::scoped_lock hold(m_state->lock);
    return m_state->isGranted;
}

DesktopFacts Session::facts() const
{
    const std::scoped_lock hold(m_state->lock);
    return m_state->facts;
}

void Session::setOnChange(std::function<void()> onChange)
{
    const std::scoped_lock hold(m_state->onChangeLock);
    m_state->onChange = std::move(onChange);
}

void Session::queue(Work work)
{
    {
        const std::scoped_lock hold(m_state->lock);
        if (!m_state->isOver) {
            m_state->waiting.push_back(std::move(work));
            m_state->wake->raise();
            return;
        }
    }
    work(nullptr);
}

} // namespace Platform::X11
