#include "reading/capture.h"

#include "model/failure.h"

#include <unistd.h>

namespace netparam {

Capture::Capture()
{
    std::fflush(stdout);
    file_ = std::tmpfile();
    saved_ = file_ != nullptr ? dup(STDOUT_FILENO) : -1;
    if (saved_ < 0 || dup2(fileno(file_), STDOUT_FILENO) < 0) {
        if (file_ != nullptr)
            std::fclose(file_);
        if (saved_ >= 0)
            close(saved_);
        throw Failure(exit_file, "the library's output cannot be set apart: no temporary file");
    }
}

Capture::~Capture()
{
    end();
    std::fclose(file_);
}

void Capture::end()
{
    if (saved_ < 0)
        return;
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
    saved_ = -1;
}

std::string Capture::text()
{
    end();
    std::string text;
    char buffer[4096];
    std::rewind(file_);
    for (std::size_t length; (length = std::fread(buffer, 1, sizeof buffer, file_)) > 0;)
        text.append(buffer, length);
    return text;
}

} // namespace netparam
