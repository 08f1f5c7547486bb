#include "ui/PictureLoader.h"

#include <chrono>
#include <condition_variable>
#include <list>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <thread>
#include <utility>

namespace tobbin {
namespace {

constexpr std::chrono::seconds kLongestWait{2};

// A picture may be larger than the memory that is left, which is no reason to end the program.
Picture MakeWith(PictureMaker& maker, const PictureRequest& request) {
    try {
        return maker.Make(request);
    } catch (const std::bad_alloc&) {
        return {{}, "there is not enough memory"};
    }
}

struct Slot {
    std::optional<PictureRequest> wanted, expected;
    std::function<void()> ready;
    std::shared_ptr<const Picture> picture;
    std::uint64_t number = 0;  // of the request; the newest has the highest
};

// The last pictures made, the newest first.
class Kept {
 public:
    explicit Kept(std::size_t mostBytes) : m_mostBytes(mostBytes) {}

    std::shared_ptr<const Picture> MaybeFind(const PictureRequest& request,
                                             const std::string& stamp) {
        for (auto each = m_pictures.begin(); each != m_pictures.end(); ++each)
            if (each->request == request && each->stamp == stamp) {
                m_pictures.splice(m_pictures.begin(), m_pictures, each);
                return each->picture;
            }
        return nullptr;
    }
    void Add(const PictureRequest& request, std::string stamp,
             std::shared_ptr<const Picture> picture) {
        m_bytes += BytesOf(*picture);
        m_pictures.push_front({request, std::move(stamp), std::move(picture)});
        while (m_bytes > m_mostBytes && m_pictures.size() > 1) {
            m_bytes -= BytesOf(*m_pictures.back().picture);
            m_pictures.pop_back();
        }
    }

 private:
    struct Entry {
        PictureRequest request;
        std::string stamp;
        std::shared_ptr<const Picture> picture;
    };
    static std::size_t BytesOf(const Picture& picture) {
        return picture.pixels.pixels.size() * sizeof(std::uint32_t);
    }

    std::list<Entry> m_pictures;
    std::size_t m_bytes = 0;
    std::size_t m_mostBytes;
};

}  // namespace

// Shared with the thread, so that either may end first.
struct PictureLoader::State {
    explicit State(std::size_t mostBytes) : kept(mostBytes) {}

    std::mutex mutex;  // guards all but `kept`, which is the thread's
    std::condition_variable changed;
    std::map<const void*, Slot> slots;
    std::uint64_t lastNumber = 0;
    bool stop = false;
    bool ended = false;
    Kept kept;

    // The request to be served next; the newest wanted one, or else an expected one.
    const PictureRequest* MaybeNext() const {
        const Slot* newest = nullptr;
        for (const auto& [owner, slot] : slots)
            if (slot.wanted && (newest == nullptr || slot.number > newest->number))
                newest = &slot;
        if (newest != nullptr)
            return &*newest->wanted;
        for (const auto& [owner, slot] : slots)
            if (slot.expected)
                return &*slot.expected;
        return nullptr;
    }
    void Deliver(const PictureRequest& request, const std::shared_ptr<const Picture>& picture) {
        for (auto& [owner, slot] : slots) {
            if (slot.expected == request)
                slot.expected.reset();
            if (slot.wanted != request)
                continue;
            slot.wanted.reset();
            slot.picture = picture;
            slot.ready();
        }
    }
};

PictureLoader::PictureLoader(MakeMaker makeMaker, std::size_t mostBytes)
    : m_makeMaker(std::move(makeMaker)), m_state(std::make_shared<State>(mostBytes)) {}

PictureLoader::~PictureLoader() {
    std::unique_lock lock(m_state->mutex);
    m_state->stop = true;
    m_state->slots.clear();
    m_state->changed.notify_all();
    if (m_started)
        m_state->changed.wait_for(lock, kLongestWait, [this] { return m_state->ended; });
}

void PictureLoader::Start() {
    if (std::exchange(m_started, true))
        return;
    std::thread([state = m_state, makeMaker = m_makeMaker] {
        Run(*state, makeMaker);
        const std::lock_guard lock(state->mutex);
        state->ended = true;
        state->changed.notify_all();
    }).detach();
}

void PictureLoader::Run(State& state, const MakeMaker& makeMaker) {
    const std::unique_ptr<PictureMaker> maker = makeMaker();
    std::unique_lock lock(state.mutex);
    while (!state.stop) {
        const PictureRequest* const next = state.MaybeNext();
        if (next == nullptr) {
            state.changed.wait(lock);
            continue;
        }
        const PictureRequest request = *next;
        lock.unlock();
        const std::string stamp = maker->Stamp(request.path);
        std::shared_ptr<const Picture> picture = state.kept.MaybeFind(request, stamp);
        if (picture == nullptr) {
            picture = std::make_shared<const Picture>(MakeWith(*maker, request));
            if (picture->problem.empty())
                state.kept.Add(request, stamp, picture);
        }
        lock.lock();
        state.Deliver(request, picture);
    }
}

void PictureLoader::Want(const void* owner, PictureRequest request, std::function<void()> ready) {
    Start();
    const std::lock_guard lock(m_state->mutex);
    m_state->slots[owner] = {std::move(request), std::nullopt, std::move(ready), nullptr,
                             ++m_state->lastNumber};
    m_state->changed.notify_all();
}

void PictureLoader::Expect(const void* owner, PictureRequest request) {
    Start();
    const std::lock_guard lock(m_state->mutex);
    m_state->slots[owner].expected = std::move(request);
    m_state->changed.notify_all();
}

std::shared_ptr<const Picture> PictureLoader::MaybeTake(const void* owner) {
    const std::lock_guard lock(m_state->mutex);
    const auto slot = m_state->slots.find(owner);
    return slot == m_state->slots.end() ? nullptr : std::exchange(slot->second.picture, nullptr);
}

void PictureLoader::Forget(const void* owner) {
    const std::lock_guard lock(m_state->mutex);
    m_state->slots.erase(owner);
}

}  // namespace tobbin
