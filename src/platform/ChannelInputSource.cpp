#include "platform/ChannelInputSource.h"

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>

namespace ZKXML {

namespace {

class CChannelBinInputStream : public xercesc::BinInputStream {
public:
    explicit CChannelBinInputStream(ZK::IChannel& channel) : m_channel(channel), m_position(0) {}

    XMLFilePos curPos() const override { return m_position; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        unsigned int read = 0;
        const ZK::Status status = m_channel.ReadBin(reinterpret_cast<char*>(toFill),
                                                    static_cast<unsigned int>(maxToRead), &read);
        if (status != ZK::kStatusOK && status != ZK::kStatusEndOfInput)
            ThrowXML(xercesc::XMLPlatformUtilsException,
                     xercesc::XMLExcepts::File_CouldNotReadFromFile);
        m_position += read;
        return read;
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    ZK::IChannel& m_channel;
    XMLFilePos m_position;
};

} // namespace

IChannelInputSource::IChannelInputSource(ZK::IChannel& channel)
    : xercesc::InputSource(xercesc::XMLPlatformUtils::fgMemoryManager), m_channel(channel) {}

xercesc::BinInputStream* IChannelInputSource::makeStream() const {
    return new CChannelBinInputStream(m_channel);
}

} // namespace ZKXML
