// The sections of the tour that live in files of their own, one per subsystem; main.cpp runs
// them in order after the foundations.
#pragma once

namespace tour {

void Section(const char* title);
void Threads();
void Sockets();
void Files();
void XmlReading();
void XmlWriting();
void XmlDom();
void Tokenizers();
void UntrustedInput();
void XmlDomWriting();

} // namespace tour
