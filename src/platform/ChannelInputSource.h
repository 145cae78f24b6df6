// ZKXML::IChannelInputSource: an input source of the Xerces-C scanner over a channel of the root
// library, such as an IO::File. The channel stays the caller's: open, alive and closed by it.
#pragma once

#include <xercesc/sax/InputSource.hpp>

#include <vorn/platform/Channel.h>

namespace ZKXML {

class IChannelInputSource : public xercesc::InputSource {
public:
    explicit IChannelInputSource(ZK::IChannel& channel);

    // Each read asks the channel for the whole block the scanner wants; a failed read throws what
    // a file input of Xerces-C throws, XMLPlatformUtilsException.
    xercesc::BinInputStream* makeStream() const override;

private:
    ZK::IChannel& m_channel;
};

} // namespace ZKXML
