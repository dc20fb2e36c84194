#include "launcher/InstanceMessage.h"

#include <algorithm>

namespace {

// The last character is the version of the format.
constexpr std::string_view mark = "TSR1";
constexpr std::size_t headerBytes = 8;

void appendNumber(std::string& bytes, std::size_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

void appendText(std::string& bytes, const std::string& text)
{
    appendNumber(bytes, text.size(), 4);
    bytes += text;
}

std::size_t numberAt(std::string_view bytes, std::size_t size)
{
    std::size_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= std::size_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return value;
}

bool takeNumber(std::string_view& bytes, std::size_t size, std::size_t& value)
{
    if (bytes.size() < size)
        return false;
    value = numberAt(bytes, size);
    bytes.remove_prefix(size);
    return true;
}

bool takeText(std::string_view& bytes, std::string& text)
{
    std::size_t length = 0;
    if (!takeNumber(bytes, 4, length) || bytes.size() < length)
        return false;
    text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return true;
}

bool isKnown(InstanceMessage::Number number)
{
    using Number = InstanceMessage::Number;
    return number == Number::Greeting || number == Number::Acknowledgement ||
           number == Number::ToFront || number == Number::Refusal || number == Number::HandOver;
}

bool decodeBody(std::string_view body, InstanceMessage& message)
{
    std::size_t number = 0;
    if (!takeNumber(body, 2, number))
        return false;
    message.number = static_cast<InstanceMessage::Number>(number);
    return isKnown(message.number) && takeText(body, message.text) &&
           takeText(body, message.activationToken) && takeText(body, message.startupId) &&
           body.empty();
}

} // namespace

std::string encodeMessage(const InstanceMessage& message)
{
    const std::size_t length = 2 + 3 * std::size_t{4} + message.text.size() +
                               message.activationToken.size() + message.startupId.size();
    if (headerBytes + length > maxMessageBytes)
        return {};
    std::string bytes(mark);
    bytes.reserve(headerBytes + length);
    appendNumber(bytes, length, 4);
    appendNumber(bytes, static_cast<std::size_t>(message.number), 2);
    appendText(bytes, message.text);
    appendText(bytes, message.activationToken);
    appendText(bytes, message.startupId);
    return bytes;
}

void InstanceReader::feed(std::string_view bytes)
{
    if (m_bad)
        return;
    // The header alone tells whether the rest is worth storing.
    const std::size_t missing = headerBytes - std::min(headerBytes, m_bytes.size());
    const std::size_t first = std::min(missing, bytes.size());
    m_bytes += bytes.substr(0, first);
    std::size_t length = 0;
    if (bodyLength(length) == State::Bad)
        goBad();
    else
        m_bytes += bytes.substr(first);
}

InstanceReader::State InstanceReader::next(InstanceMessage& message)
{
    if (m_bad)
        return State::Bad;
    std::size_t length = 0;
    const State header = bodyLength(length);
    if (header == State::Bad)
        return goBad();
    if (header == State::Incomplete || m_bytes.size() < headerBytes + length)
        return State::Incomplete;
    InstanceMessage decoded;
    if (!decodeBody(std::string_view(m_bytes).substr(headerBytes, length), decoded))
        return goBad();
    message = std::move(decoded);
    m_bytes.erase(0, headerBytes + length);
    return State::Complete;
}

InstanceReader::State InstanceReader::bodyLength(std::size_t& length) const
{
    const std::string_view bytes(m_bytes);
    const std::size_t known = std::min(mark.size(), bytes.size());
    if (bytes.substr(0, known) != mark.substr(0, known))
        return State::Bad;
    if (bytes.size() < headerBytes)
        return State::Incomplete;
    length = numberAt(bytes.substr(mark.size()), 4);
    return length > maxMessageBytes - headerBytes ? State::Bad : State::Complete;
}

InstanceReader::State InstanceReader::goBad()
{
    m_bad = true;
    m_bytes = std::string();
    return State::Bad;
}
