// The way back to the host: sends documents, and ends the process so that nothing is left behind.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "mp/serializable.h"
#include "transport/frame.h"
#include "zeq_api/command/result.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq::convexor {

/// Writes documents as frames. When the host no longer listens, sending does not return: nobody is left to
/// work for, and the process ends as with endProcess(). Sending throws mp::SharedMemoryException, with a text
/// for the user, when the shared directory takes no buffer.
class Channel {
public:
    explicit Channel(int fd) : m_fd(fd), m_writer(fd) {}

    /// A command has been taken up: it will be answered by answer(), or by endProcess() as interrupted.
    void expectAnswer();
    /// Sends the last document of a command.
    void answer(const Result& result);

    void send(const mp::ISerializable& document);
    void send(const std::shared_ptr<IExchangeObject>& object);
    /// Saves the entities into the geometry, compressed or not, and sends it.
    /// @throws std::runtime_error if they cannot be saved
    void send(const std::shared_ptr<ExcBlockGeometry>& geometry, const ENTITY_LIST& entities, bool compress);

    /// Ends the process from whatever thread, in order: a document under way is completed if the host still
    /// reads, a shared buffer that the host was not told of is removed, and an open command is answered as
    /// interrupted. Destructors do not run, because the kernel cannot be interrupted in its work.
    [[noreturn]] void endProcess();

private:
    using Compose = std::function<void(mp::OutputStream&)>;

    void write(const Compose& compose);
    void write(const mp::ISerializable& document);
    void rememberBuffer(std::wstring name);
    [[noreturn]] void leave(int exitCode);

    const int m_fd;
    transport::FrameWriter m_writer;

    std::timed_mutex m_sending;            ///< held while a document is composed and written
    std::atomic<bool> m_composing = false; ///< a shared buffer may exist whose name is not known yet
    bool m_answerDue = false;              ///< guarded by m_sending

    std::mutex m_bufferMutex;
    std::wstring m_buffer; ///< name of the shared buffer that the host has not been told of; empty if none
};

} // namespace zeq::convexor
