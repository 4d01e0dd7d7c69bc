#include "foundation/runtime/Message.h"

namespace q1framework
{

Message::~Message() = default;

}  // namespace q1framework
