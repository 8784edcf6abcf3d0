// The indented tree a person reads, made from the JSON form of a message.
#ifndef ORVO_TOOLS_ORVO_TREE_TEXT_H_
#define ORVO_TOOLS_ORVO_TREE_TEXT_H_

#include <string>

#include "tools/orvo/DataJson.h"

namespace orvo {
namespace tool {

std::string messageTree(const Json& message);

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_ORVO_TREE_TEXT_H_
