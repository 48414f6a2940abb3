# Writes FILES as texts into the C++ source OUT: cmake -DOUT=... -DFILES=... -P embed.cmake
set(entries "")
foreach(file IN LISTS FILES)
    get_filename_component(name "${file}" NAME)
    file(READ "${file}" text)
    string(APPEND entries "    {\"${name}\", R\"embedded(${text})embedded\"},\n")
endforeach()
file(WRITE "${OUT}" "#include \"verbs/embedded.h\"

namespace netparam {

const std::map<std::string, std::string_view> &embedded_files()
{
    static const std::map<std::string, std::string_view> files = {
${entries}    };
    return files;
}

} // namespace netparam
")
