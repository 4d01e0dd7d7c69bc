#pragma once

#include <atomic>
#include <cstdint>

namespace q1framework
{

// What a plug-in keeps for an editor that shows it: the parameters whose stored value changed
// since the editor last looked. An editor registers itself with AudioPlugin::addEditor while it
// exists; the plug-in never owns it.
//
// The plug-in only marks: nothing of the editor runs on the thread that changed a value, which
// may be the host's audio thread, nor under the plug-in's mutex. The editor takes the marks on
// its own thread, at its next idle step, and shows those controls again.
//
// Thread contract: mark and markAll on any thread (a relaxed atomic or, wait-free, no system
// call); takeChanged on the editor's thread.
class PluginEditorView
{
public:
    // Parameter indices up to this many can be marked; higher ones count as all of them.
    static constexpr int maximumParameters = 64;

    virtual ~PluginEditorView() = default;

    // Parameter `index` has a new stored value.
    void markChanged(int index)
    {
        const uint64_t bit = index >= 0 && index < maximumParameters ? uint64_t{1} << index : ~uint64_t{0};
        changed.fetch_or(bit, std::memory_order_release);
    }
    // Every parameter may have a new stored value (a program or a state was applied).
    void markAllChanged() { changed.store(~uint64_t{0}, std::memory_order_release); }

    // The marks since the last call, bit n for parameter n, and no marks afterwards.
    uint64_t takeChanged() { return changed.exchange(0, std::memory_order_acquire); }

private:
    std::atomic<uint64_t> changed{0};
};

}  // namespace q1framework
