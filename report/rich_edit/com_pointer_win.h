// Owner of a reference to a component object.
#pragma once

#include <unknwn.h>

#include <memory>

namespace tonvale {

struct ComReleaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, ComReleaser>;

// Another interface of `object`; nullptr when it has none such.
template <typename Interface>
ComPointer<Interface> QueryFor(IUnknown* object, REFIID id) {
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(id, &found))) return nullptr;
    return ComPointer<Interface>(static_cast<Interface*>(found));
}

}  // namespace tonvale
