#pragma once

#include "project/project_element.h"
#include "xml/preprocessor.h"

namespace project {

/// The document of a solution file: its elements are nodes of the project tree from the start.
class ProjectSystemXMLPP2 : public xml::XMLPP2 {
public:
    xml::XMLElement* createElement(QByteArray name) override {
        return new ProjectElement(QString::fromUtf8(name));
    }
    void warning(const QString&) override {}
};

/// The document type that marks a solution file.
inline constexpr char solutionDoctype[] = "Kestrelhaus_Project_File";

}  // namespace project
