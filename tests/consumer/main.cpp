// Built against an installed orvo: one include, one target.
#include <orvo/orvo.h>

#include <cstdio>

int main() {
  orvo::common::ORVO_String text("consumer");
  text.append(" links orvo");
  std::printf("%s\n", text.c_str());
  return text == "consumer links orvo" ? 0 : 1;
}
