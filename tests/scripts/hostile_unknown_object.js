var word = CreateObject("Word.Application");
