#ifndef GUIDE_SHOW_H
#define GUIDE_SHOW_H

#include <iostream>

#include "tqutil/STPException.h"
#include "tqxml/writer/XmlDoc.h"

// What the programs of the guide share to show what they do. The guide quotes their code between
// two lines "//! [name]", and their output below the line "[name]".

/// Begins the output of one piece of the guide.
inline void section(char const* name) { std::cout << '[' << name << "]\n"; }

/// Closes a document and shows it without the XML declaration, which all have in common.
inline void show(Orn::XmlDoc& doc) {
  doc.close();
  std::string const text = doc.byte_array();
  std::string const declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";
  bool const declared = text.compare(0, declaration.size(), declaration) == 0;
  std::cout << text.substr(declared ? declaration.size() : 0) << '\n';
}

/// Shows what a call raises.
template <class Call>
void show_failure(Call call) {
  try {
    call();
    std::cout << "nothing was raised\n";
  } catch (Orn::STPException const& e) {
    std::cout << e.what() << '\n';
  }
}

#endif
