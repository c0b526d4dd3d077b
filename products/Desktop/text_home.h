/// ITextHome: where a text is kept that has no file of its own.
#pragma once

class ITextHome {
public:
    /// Saves the text with all that is kept beside it. @return false: nothing was saved
    virtual bool Save() = 0;
    /// The same under another name, for which it asks.
    virtual bool SaveAs() = 0;

protected:
    ~ITextHome() = default;
};
