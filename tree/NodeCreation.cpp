#include "tree/NodeCreation.h"

#include "plugin/ModuleState.h"

void AssignIdentity(ObjectBranch& node) {
    node.nodeID = currentIndex++;
    node.functionID = -1;
}

ObjectBranch* MakeNode(ObjectBranch& parent) {
    ObjectBranch* const node = AddChild(parent);
    AssignIdentity(*node);
    ++objectCount;
    return node;
}
