#include "launcher/InstanceClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Number = InstanceMessage::Number;

constexpr std::chrono::milliseconds pauseBetweenTries(20);
constexpr std::size_t captionCharacters = 255;

// The first characters of a UTF-8 text; broken bytes count as characters.
std::string firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool startsCharacter = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
        if (startsCharacter && count-- == 0)
            break;
    }
    return std::string(text.substr(0, end));
}

// Lower case for the letters of the Western alphabets: plain ones and, behind
// their common lead byte, U+00C0 to U+00DE.
std::string lowered(std::string text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool accented =
            i > 0 && text[i - 1] == '\xC3' && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
        if ((byte >= 'A' && byte <= 'Z') || accented)
            text[i] = static_cast<char>(byte + 0x20);
    }
    return text;
}

// The caption of the running copy's frame, cut, when it begins with `prefix` without regard
// to case, otherwise `prefix` itself.
std::string FindAppWindow(const std::string& prefix, const std::string& caption)
{
    const std::string cut = firstCharacters(caption, captionCharacters);
    return lowered(cut).starts_with(lowered(prefix)) ? cut : prefix;
}

// One connection to the running copy; every step ends at the deadline.
class Channel {
public:
    explicit Channel(Clock::time_point deadline)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)),
          m_deadline(deadline)
    {
    }
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;
    ~Channel()
    {
        if (m_socket >= 0)
            ::close(m_socket);
    }

    bool connectTo(const std::string& path) const
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        if (m_socket < 0 || path.size() >= sizeof(address.sun_path))
            return false;
        std::memcpy(address.sun_path, path.c_str(), path.size());
        return ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) ==
               0;
    }

    bool send(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent > 0)
                bytes.remove_prefix(static_cast<std::size_t>(sent));
            else if (!isTemporary() || !waitFor(POLLOUT))
                return false;
        }
        return true;
    }

    bool receive(InstanceMessage& message)
    {
        std::array<char, 4096> buffer = {};
        for (;;) {
            const InstanceReader::State state = m_reader.next(message);
            if (state != InstanceReader::State::Incomplete)
                return state == InstanceReader::State::Complete;
            const ssize_t got = ::recv(m_socket, buffer.data(), buffer.size(), 0);
            if (got > 0)
                m_reader.feed({buffer.data(), static_cast<std::size_t>(got)});
            else if (got == 0 || !isTemporary() || !waitFor(POLLIN))
                return false;
        }
    }

private:
    static bool isTemporary() { return errno == EAGAIN || errno == EINTR; }

    bool waitFor(short events) const
    {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now()).count();
        if (left <= 0)
            return false;
        pollfd watched = {m_socket, events, 0};
        const int ready =
            ::poll(&watched, 1, static_cast<int>(std::min<std::int64_t>(left, INT_MAX)));
        return ready > 0 || (ready < 0 && errno == EINTR);
    }

    int m_socket;
    Clock::time_point m_deadline;
    InstanceReader m_reader;
};

enum class Answer { Unreachable, Silent, Refused, Taken };

// What became of the last try, and whose frame it was.
struct Attempt {
    Answer answer = Answer::Unreachable;
    std::string caption;
};

void handOver(const InstanceFolder& folder, const std::string& title, std::string_view bytes,
              Clock::time_point deadline, Attempt& attempt)
{
    Channel channel(deadline);
    InstanceMessage answer;
    attempt.answer = Answer::Unreachable;
    if (!channel.connectTo(folder.socketPath()))
        return;
    attempt.answer = Answer::Silent;
    if (!channel.receive(answer) || answer.number != Number::Greeting)
        return;
    attempt.caption = FindAppWindow(title, answer.text);
    if (!channel.send(bytes) || !channel.receive(answer))
        return;
    if (answer.number == Number::Acknowledgement)
        attempt.answer = Answer::Taken;
    else if (answer.number == Number::Refusal)
        attempt.answer = Answer::Refused;
}

std::string reasonOf(const Attempt& attempt, const InstanceFolder& folder)
{
    switch (attempt.answer) {
    case Answer::Unreachable:
        return "Tessera läuft schon, ist aber nicht zu erreichen ('" + folder.socketPath() +
               "'). Bitte das laufende Tessera beenden und noch einmal starten.";
    case Answer::Refused:
        return "Das laufende Fenster '" + attempt.caption +
               "' wird gerade beendet und wartet auf eine Antwort. Bitte dort antworten und "
               "noch einmal starten.";
    case Answer::Silent:
    case Answer::Taken:
        break;
    }
    return "Das laufende Fenster '" + attempt.caption + "' hat nicht geantwortet.";
}

StartResult failed(const std::string& error)
{
    return {Outcome::Failed, {}, error};
}

} // namespace

StartResult takePlaceOrHandOver(const InstanceFolder& folder, const StartRequest& request)
{
    if (folder.path.empty())
        return failed(folder.error);
    const Clock::time_point deadline = Clock::now() + request.patience;
    const std::string bytes = encodeMessage(request.message);
    Attempt attempt{Answer::Unreachable, request.title};
    for (;;) {
        InstanceLock lock;
        const InstanceLock::State state = lock.acquire(folder.lockPath());
        // A running copy listens without this lock when the lock's file was removed.
        if (state == InstanceLock::State::Held && !Channel(deadline).connectTo(folder.socketPath()))
            return {Outcome::FirstCopy, std::move(lock), {}};
        if (state == InstanceLock::State::Failed)
            return failed("Die Datei '" + folder.lockPath() +
                          "' ist nicht zugänglich: " + std::strerror(errno));
        if (bytes.empty())
            return failed("Die Adresse ist zu lang und wurde nicht übergeben.");
        lock.release();
        handOver(folder, request.title, bytes, deadline, attempt);
        if (attempt.answer == Answer::Taken)
            return {Outcome::HandedOver, {}, {}};
        // The running copy is still starting and will answer a later try, or it is
        // ending: then a later try gets the lock.
        if (Clock::now() >= deadline)
            return failed(reasonOf(attempt, folder));
        std::this_thread::sleep_for(pauseBetweenTries);
    }
}
