#pragma once

// Projects that the tests of several layers open, the window tests among them.

namespace mw::test {

// A project with one title, MenuTracks with a video track, a menu in "en" using it, and an
// empty "de" set.
inline const char* kMenuProject =
    R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<TranslationTable objectID="3"/>
<Media objectID="2">
<Title objectID="6">
<MediaSource objectID="7" mediaType="featureAvi" location="movie.avi"/>
</Title>
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="menu.avi"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="0" endFrame="10" type="video"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" backgroundVideoID="22" backgroundAudioID="none" menuType="title" menuName="Main"/>
</LanguageMenus>
<LanguageMenus objectID="30" languageCode="de" startingMenuID="none" rootMenuID="none"/>
</DivXMediaManager>
)";

// Button 13 has a drawn rectangle, 15 no extra info, 17 a text overlay; the menu is
// locked and stores its colours and frame. Its background file is missing.
inline const char* kCanvasProject = R"(<DivXMediaManager objectID="1" defaultMenuLanguage="en">
<TranslationTable objectID="3"/>
<Media objectID="2">
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="menu.avi">
<!-- <Menuwright Buttons='3' menuID='12'/> -->
</MediaSource>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="5" endFrame="10" type="video"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" backgroundVideoID="22" backgroundAudioID="none" menuType="title" menuName="Main">
<!-- <Menuwright Color1='1' Color2='2' Color3='3' frame='7' lock='1'/> -->
<ButtonMenu objectID="13">
<!-- <Menuwright Shape='*Rect' width='5' Position='0 0 0 0'/> -->
<MenuRectangle objectID="14" left="10" top="20" width="100" height="30"/>
</ButtonMenu>
<ButtonMenu objectID="15">
<!-- not extra info -->
<MenuRectangle objectID="16" left="200" top="20" width="50" height="50"/>
</ButtonMenu>
<ButtonMenu objectID="17">
<!-- <Menuwright Shape='*Text' Text='Play' Font='Times New Roman,B,I' FontSize='20.5' Shadow='3LT' Outline='2'/> -->
<MenuRectangle objectID="18" left="10" top="100" width="300" height="40"/>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

} // namespace mw::test
