// Files for the tests: a folder that goes with the test, and whole files as strings.
#pragma once

#include <string>

class CTestFolder { // a new, empty folder; deleted with all files in it
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    std::string Path(const std::string& name) const; // of a file in it
    int CountFiles() const;

private:
    std::string m_path;
};

bool WriteBytes(const std::string& path, const std::string& bytes);
std::string ReadBytes(const std::string& path); // "" when it cannot be read
bool Exists(const std::string& path);
