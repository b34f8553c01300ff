// Sends documents frame by frame and keeps account of the shared buffer under way.
#include "convexor/channel.h"

#include <cerrno>
#include <chrono>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include "mp/exception.h"
#include "mp/shared_buffer.h"
#include "mp/string.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"

namespace zeq::convexor {

namespace {

/// The name of the shared buffer in the text of a wrapper document; empty for any other text.
std::wstring bufferName(std::wstring_view text) {
    for (const std::wstring_view before : {std::wstring_view(L"\"binary\":true,\"exchange_object_data\":\""),
                                           std::wstring_view(L"\"shared_acis_buffer_name\":\"")}) {
        const auto found = text.find(before);
        if (!text.starts_with(L"{\"exchange_object_name\"") || found == text.npos) continue;
        text.remove_prefix(found + before.size());
        return std::wstring(text.substr(0, text.find(L'"')));
    }
    return {};
}

bool becomesWritable(int fd, std::chrono::milliseconds within) {
    pollfd entry{fd, POLLOUT, 0};
    return ::poll(&entry, 1, static_cast<int>(within.count())) == 1 && (entry.revents & POLLOUT) != 0;
}

} // namespace

void Channel::expectAnswer() {
    const std::lock_guard sending(m_sending);
    m_answerDue = true;
}

void Channel::answer(const Result& result) {
    const std::lock_guard sending(m_sending);
    m_answerDue = false;
    write(result);
}

void Channel::send(const mp::ISerializable& document) {
    const std::lock_guard sending(m_sending);
    write(document);
}

void Channel::send(const std::shared_ptr<IExchangeObject>& object) {
    ExchangeObjectWrapper wrapper;
    wrapper.set(object);
    send(wrapper);
}

void Channel::send(const std::shared_ptr<ExcBlockGeometry>& geometry, const ENTITY_LIST& entities,
                   bool compress) {
    const std::lock_guard sending(m_sending);
    write([&](mp::OutputStream& stream) {
        if (!geometry->setGeometry(entities, compress)) {
            if (!geometry->bufferError().empty()) throw mp::SharedMemoryException(geometry->bufferError());
            throw std::runtime_error("its geometry cannot be saved");
        }
        ExchangeObjectWrapper wrapper;
        wrapper.set(geometry);
        wrapper.writeObject(stream);
    });
}

void Channel::write(const mp::ISerializable& document) {
    write([&document](mp::OutputStream& stream) { document.writeObject(stream); });
}

void Channel::endProcess() {
    using namespace std::chrono_literals;
    bool isWhole = m_sending.try_lock_for(1s);
    while (!isWhole && m_composing) isWhole = m_sending.try_lock_for(1s);
    if (isWhole && m_answerDue && becomesWritable(m_fd, 1s)) {
        Result interrupted;
        interrupted.setCode(Result::ECode::interrupted);
        interrupted.setMessage(L"The translator was asked to end.");
        interrupted.setFinished(true);
        write(interrupted);
    }
    leave(0);
}

void Channel::write(const Compose& compose) {
    std::wostringstream stream;
    m_composing = true;
    try {
        compose(stream);
    } catch (const mp::SharedMemoryException& error) {
        m_composing = false;
        throw mp::SharedMemoryException(L"Cannot write to the shared directory '" +
                                        mp::toWideString(mp::sharedDirectory()) + L"': " + error.message());
    } catch (...) {
        m_composing = false;
        throw;
    }
    const std::wstring text = stream.str();
    rememberBuffer(bufferName(text));
    m_composing = false;

    try {
        m_writer.write(text);
    } catch (const std::system_error& error) {
        if (error.code().value() == EPIPE) leave(0);
        std::cerr << "convexor: Cannot answer the host: " << error.what() << '\n';
        leave(3);
    } catch (...) {
        const std::lock_guard lock(m_bufferMutex);
        mp::removeObject(m_buffer);
        m_buffer.clear();
        throw;
    }
    rememberBuffer({});
}

void Channel::rememberBuffer(std::wstring name) {
    const std::lock_guard lock(m_bufferMutex);
    m_buffer = std::move(name);
}

void Channel::leave(int exitCode) {
    // Never unlocked: the other thread must not announce the buffer any more.
    m_bufferMutex.lock();
    mp::removeObject(m_buffer);
    ::_exit(exitCode);
}

} // namespace zeq::convexor
