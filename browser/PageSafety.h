#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

/// How the page shown has come to this computer, as far as the engine tells it, and what the
/// user has said about the page in this run. All texts are clean, plain ones.
struct PageSafety {
    enum class Kind {
        /// No page is shown, or it is not known yet whose it is.
        Unknown,
        /// Encrypted, and the engine has found the server's certificate in order.
        Secured,
        /// Encrypted, but the user, not the engine, trusts the certificate.
        SecuredByException,
        /// Others could read and change it on its way, or nobody vouches for it.
        NotSecured,
        /// It never left this computer.
        Local,
    };
    /// Of a certificate that is not in order. Of any other the engine tells nothing (Qt 6.4 and
    /// 6.8), and a connection of the program's own would meet another one.
    struct Certificate {
        QString issuer;
        QDateTime until;
        /// What is wrong with it, in a sentence.
        QString problem;

        bool operator==(const Certificate& other) const = default;
    };
    /// What the user has allowed or refused.
    struct Answer {
        /// Stands for the answer when it is taken back.
        QString id;
        QString text;

        bool operator==(const Answer& other) const = default;
    };

    Kind kind = Kind::Unknown;
    /// Scheme, host and port, or words for what has none; empty if there is nothing to name.
    QString site = {};
    bool hasServer = false;
    /// The user has made an exception for the server, and has taken it back.
    bool isTakenBack = false;
    std::optional<Certificate> certificate = {};
    QList<Answer> answers = {};

    bool operator==(const PageSafety& other) const = default;
};

/// What the kind of a page is found by.
struct PageOrigin {
    enum class Exception { None, Allowed, TakenBack };

    /// The address that the engine has arrived at.
    QUrl shown;
    /// The address that the document has told of itself; empty until it has. It belongs to the
    /// page before when the page shown has not said anything yet.
    QUrl reported = {};
    /// Whether the user has made one for the server of the page shown.
    Exception exception = Exception::None;
};

PageSafety::Kind safetyOf(const PageOrigin& page);

/// The kind in a word or two, and what it means in a sentence.
QString safetyName(PageSafety::Kind kind);
QString safetySentence(const PageSafety& safety);
