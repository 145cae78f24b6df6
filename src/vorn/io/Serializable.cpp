#include <vorn/io/Serializable.h>

namespace vorn::io {

ISerializable::~ISerializable() = default;

} // namespace vorn::io
