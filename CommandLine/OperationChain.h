#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Formats/ChannelTypes.h"
#include "Texture/CMOXTexture.h"

namespace CLI
{
class App;
}

namespace moxtexture
{

/// What one operation leaves for those after it.
struct ChainState
{
    EResizeMode eFilter = eResizeLinear;
};

/// One operation with its numbers; gives false where the texture cannot take it.
using OperationStep = std::function<bool(CMOXTexture&, ChainState&)>;

/// The operations of one command line, in the order in which they were written.
class COperationChain
{
public:
    /// Gives a verb the options of all operations. Parsing the verb's words then fills the chain, which must live as long as the
    /// verb does.
    void addOptions(CLI::App& verb);

    /// True where nothing would change the pixels: a choice of filter alone does not.
    [[nodiscard]] bool isEmpty() const;

    /// @param texture  in working form
    /// @param strFailed  takes the words of the operation that failed
    /// @return false if one did; the texture may be spoiled then
    [[nodiscard]] bool apply(CMOXTexture& texture, std::string& strFailed) const;

private:
    struct Operation
    {
        std::string strWords;
        OperationStep step;
        bool bEdits;
    };

    std::vector<Operation> m_Operations;
};

} // namespace moxtexture
