#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What two copies of the program say to each other over the user's socket. The
/// running copy greets with its frame's caption, the second start hands over its
/// address or asks for the frame, and the running copy acknowledges or refuses. Texts
/// are UTF-8.
struct InstanceMessage {
    enum class Number : std::uint16_t {
        Greeting = 1,        ///< `text` is the caption of the frame
        Acknowledgement = 2, ///< the message has been handled
        ToFront = 3,         ///< started without an address: show the frame
        Refusal = 4,         ///< not taken, as the running copy is ending: try again
        HandOver = 1025,     ///< `text` is the address to open; its published number
    };

    Number number = Number::Acknowledgement;
    std::string text;
    /// What the desktop gave the second start so that a window may come to the front.
    std::string activationToken;
    std::string startupId;

    bool operator==(const InstanceMessage&) const = default;
};

/// The longest message on the wire, in bytes, its header included.
inline constexpr std::size_t maxMessageBytes = std::size_t{2} * 1024 * 1024;

/// The bytes of a message; empty when they would be more than `maxMessageBytes`.
std::string encodeMessage(const InstanceMessage& message);

/// Takes bytes in pieces of any size and yields the messages in them. Once the
/// bytes were no message, the reader stays bad and keeps nothing.
class InstanceReader {
public:
    enum class State { Incomplete, Complete, Bad };

    /// Adds bytes; of a message that is too long or foreign nothing is stored
    /// beyond the piece that shows it.
    void feed(std::string_view bytes);
    /// Takes the next message out. `message` is written only for `Complete`.
    State next(InstanceMessage& message);

private:
    State bodyLength(std::size_t& length) const;
    State goBad();

    std::string m_bytes;
    bool m_bad = false;
};
