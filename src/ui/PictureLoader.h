#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "ui/PictureMaker.h"

namespace tobbin {

// Makes pictures on a thread of its own, the program's only one beside the window's that does
// lasting work, and keeps the last ones. The thread uses nothing of the program but its maker; it
// starts with the first request. All functions are for the window's thread.
class PictureLoader {
 public:
    // Makes the maker, on the loader's thread.
    using MakeMaker = std::function<std::unique_ptr<PictureMaker>()>;

    // `mostBytes` of pixels are kept, and the last picture in any case.
    PictureLoader(MakeMaker makeMaker, std::size_t mostBytes);
    PictureLoader(const PictureLoader&) = delete;
    PictureLoader& operator=(const PictureLoader&) = delete;

    // Waits a moment for a picture that is being made, and no longer.
    ~PictureLoader();

    // What an owner wants to show; takes the place of what it wanted before. `ready` is called on
    // the loader's thread when MaybeTake will give the picture; it may do no more than post a
    // message. The newest request of all is served first.
    void Want(const void* owner, PictureRequest request, std::function<void()> ready);

    // What the owner will most likely want next: made when nothing else is to be done.
    void Expect(const void* owner, PictureRequest request);

    // The picture that the owner wants, once; null while it is not ready.
    std::shared_ptr<const Picture> MaybeTake(const void* owner);

    // The owner wants nothing any more. Its `ready` is not called after this returns.
    void Forget(const void* owner);

 private:
    struct State;
    static void Run(State& state, const MakeMaker& makeMaker);
    void Start();

    MakeMaker m_makeMaker;
    std::shared_ptr<State> m_state;
    bool m_started = false;
};

}  // namespace tobbin
