// How a command of zeq ends other than well: an exit code and the message for the user.
#pragma once

#include <stdexcept>
#include <string>

namespace zeq::host {

/// The exit codes; an end by signal is 128 + its number.
namespace exit_code {
inline constexpr int done = 0;
inline constexpr int negative = 1;
inline constexpr int usage = 2;
inline constexpr int inputOutput = 3;
inline constexpr int translatorFailed = 4;
inline constexpr int translatorBroken = 5;
inline constexpr int timedOut = 6;
constexpr int signalled(int signal) { return 128 + signal; }
} // namespace exit_code

/// Ends the command. An empty message ends it without a word.
class Failure : public std::runtime_error {
public:
    Failure(int exitCode, const std::string& message) : std::runtime_error(message), m_exitCode(exitCode) {}
    int exitCode() const { return m_exitCode; }

private:
    int m_exitCode;
};

/// The form of every message: "Cannot <verb> '<thing>': <reason>", with what others wrote made printable.
std::string cannot(const std::string& verb, const std::string& thing, const std::string& reason);

/// The text of the exception being handled.
std::string currentReason();

} // namespace zeq::host
