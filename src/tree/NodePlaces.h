// Where the nodes of a tree stand in the scanned text, recorded on request.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plugincs {

/// Byte offsets into the scanned text.
struct NodePlace {
    static constexpr std::size_t kNone = ~std::size_t{0};

    std::size_t begin = kNone;   ///< First byte of its text; without text, the byte that made it.
    std::size_t behind = kNone;  ///< Behind the last byte of its text.
    std::size_t end = kNone;     ///< The ';' or the '}' that ends it.
    bool isBlock = false;
};

/// The places of all nodes of one tree, by node id.
class NodePlaces {
  public:
    /// kNone where the node has no place, or no end because nothing closes it.
    NodePlace Of(std::int32_t nodeID) const {
        const auto index = static_cast<std::size_t>(nodeID);
        return index < places_.size() ? places_[index] : NodePlace{};
    }

    void Set(std::int32_t nodeID, NodePlace place) { At(nodeID) = place; }
    void SetEnd(std::int32_t nodeID, std::size_t end) { At(nodeID).end = end; }

  private:
    NodePlace& At(std::int32_t nodeID) {
        const auto index = static_cast<std::size_t>(nodeID);
        if (index >= places_.size()) places_.resize(index + 1);
        return places_[index];
    }

    std::vector<NodePlace> places_;  // by node id
};

}  // namespace plugincs
