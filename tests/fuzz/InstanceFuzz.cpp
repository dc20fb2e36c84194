#include "launcher/InstanceMessage.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <vector>

namespace {
/// All messages in the bytes, fed in pieces of `piece` bytes.
std::vector<InstanceMessage> messagesIn(std::string_view bytes, std::size_t piece)
{
    InstanceReader reader;
    std::vector<InstanceMessage> messages;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        reader.feed(bytes.substr(at, piece));
        for (InstanceMessage message; reader.next(message) == InstanceReader::State::Complete;)
            messages.push_back(message);
    }
    return messages;
}
} // namespace

/// The first byte says how long the pieces are, and whether a good message goes first.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto choice = static_cast<std::uint8_t>(input.empty() ? 0 : input.front());
    const std::string_view rest = input.substr(std::min<std::size_t>(size, 1));
    std::string bytes;
    if (choice % 2 != 0)
        bytes = encodeMessage({InstanceMessage::Number::HandOver, std::string(rest), {}, {}});
    bytes += rest;
    const auto messages = messagesIn(bytes, 1 + choice / 2);
    require(messages == messagesIn(bytes, bytes.size() + 1), "the pieces do not matter");
    for (const InstanceMessage& message : messages) {
        const auto again = messagesIn(encodeMessage(message), maxMessageBytes);
        require(again.size() == 1 && again.front() == message, "what was read is written the same");
    }
    return 0;
}
