#import "WebViewTest.h"

@interface Download : WKNavigationAction
@end

@implementation Download
- (NSURLRequest*)request {
  return [NSURLRequest requestWithURL:[NSURL URLWithString:@"file:///page/note.bin"]];
}
- (BOOL)shouldPerformDownload {
  return YES;
}
@end

@interface Unshowable : WKNavigationResponse
@end

@implementation Unshowable
- (BOOL)canShowMIMEType {
  return NO;
}
@end

/// A challenge of one method.
@interface Challenge : NSURLAuthenticationChallenge {
  NSString* method_;
}
@end

@implementation Challenge
- (instancetype)initWithMethod:(NSString*)method {
  method_ = method;
  return self;
}
- (NSURLProtectionSpace*)protectionSpace {
  return (NSURLProtectionSpace*)self;
}
- (NSString*)authenticationMethod {
  return method_;
}
@end

namespace quendo::cocoa {
namespace {

class CocoaPageDelegateTest : public WebViewTest {
 protected:
  NSURLSessionAuthChallengeDisposition answerTo(NSString* method) {
    __block int answers = 0;
    __block NSURLSessionAuthChallengeDisposition given{};
    [navigationOf() webView:view()
        didReceiveAuthenticationChallenge:[[Challenge alloc] initWithMethod:method]
                        completionHandler:^(NSURLSessionAuthChallengeDisposition disposition,
                                            NSURLCredential* one) {
                          ++answers;
                          given = disposition;
                          EXPECT_EQ(one, nil);
                        }];
    EXPECT_EQ(answers, 1);
    return given;
  }
  void fail(NSString* domain, int code) {
    NSError* error = [NSError errorWithDomain:domain
                                         code:code
                                     userInfo:@{NSLocalizedDescriptionKey : @"lost"}];
    [navigationOf() webView:view() didFailNavigation:nil withError:error];
    [navigationOf() webView:view() didFailProvisionalNavigation:nil withError:error];
  }
};

TEST_F(CocoaPageDelegateTest, TheCoreDecidesWhereThePageGoes) {
  EXPECT_TRUE(page().navigation->decidePolicyForNavigation({"file:///page/index.html", false}));
  navigation_.allows = false;
  EXPECT_FALSE(page().navigation->decidePolicyForNavigation({"https://quendo.example/", true}));
  EXPECT_EQ(navigation_.log, (Log{"decide file:///page/index.html", "decide https://quendo.example/ link"}));
}

TEST_F(CocoaPageDelegateTest, NothingIsDownloaded) {
  __block int answers = 0;
  [navigationOf() webView:view()
      decidePolicyForNavigationAction:[[Download alloc] init]
                      decisionHandler:^(WKNavigationActionPolicy policy) {
                        ++answers;
                        EXPECT_EQ(policy, WKNavigationActionPolicyCancel);
                      }];
  EXPECT_EQ(answers, 1);
  EXPECT_TRUE(navigation_.log.empty());
}

TEST_F(CocoaPageDelegateTest, OnlyWhatCanBeShownIsLoaded) {
  for (WKNavigationResponse* response :
       {[[WKNavigationResponse alloc] init], (WKNavigationResponse*)[[Unshowable alloc] init]}) {
    __block int answers = 0;
    [navigationOf() webView:view()
        decidePolicyForNavigationResponse:response
                          decisionHandler:^(WKNavigationResponsePolicy policy) {
                            ++answers;
                            EXPECT_EQ(policy == WKNavigationResponsePolicyAllow, [response canShowMIMEType]);
                          }];
    EXPECT_EQ(answers, 1);
  }
}

TEST_F(CocoaPageDelegateTest, AFinishedLoadAndALostProcessAreTold) {
  [navigationOf() webView:view() didFinishNavigation:nil];
  [navigationOf() webViewWebContentProcessDidTerminate:view()];
  EXPECT_EQ(navigation_.log, (Log{"finished", "process ended"}));
}

TEST_F(CocoaPageDelegateTest, AFailureIsToldInWords) {
  fail(NSURLErrorDomain, -1001);
  fail(@"WebKitErrorDomain", 100);
  EXPECT_EQ(navigation_.log,
            (Log{"failed lost", "failed provisionally lost", "failed lost", "failed provisionally lost"}));
}

TEST_F(CocoaPageDelegateTest, ALoadThatGaveWayToAnotherOrWasRefusedIsNoFailure) {
  fail(NSURLErrorDomain, -999);
  fail(@"WebKitErrorDomain", 102);
  EXPECT_TRUE(navigation_.log.empty());
  fail(NSURLErrorDomain, 102);
  fail(@"WebKitErrorDomain", -999);
  EXPECT_EQ(navigation_.log.size(), 4U) << "the codes are those of their domain";
}

TEST_F(CocoaPageDelegateTest, TheSystemJudgesServersAndNobodyGetsCredentials) {
  EXPECT_EQ(answerTo(NSURLAuthenticationMethodServerTrust), NSURLSessionAuthChallengePerformDefaultHandling);
  for (NSString* method : {NSURLAuthenticationMethodHTTPBasic, NSURLAuthenticationMethodClientCertificate,
                           NSURLAuthenticationMethodNTLM})
    EXPECT_EQ(answerTo(method), NSURLSessionAuthChallengeCancelAuthenticationChallenge);
}

TEST_F(CocoaPageDelegateTest, AnAlertIsAnsweredAtOnce) {
  __block int answers = 0;
  [uiOf() webView:view()
      runJavaScriptAlertPanelWithMessage:@"Hello"
                        initiatedByFrame:nil
                       completionHandler:^{
                         ++answers;
                       }];
  EXPECT_EQ(answers, 1);
}

TEST_F(CocoaPageDelegateTest, NothingIsConfirmed) {
  __block int answers = 0;
  [uiOf() webView:view()
      runJavaScriptConfirmPanelWithMessage:@"Sure?"
                          initiatedByFrame:nil
                         completionHandler:^(BOOL result) {
                           ++answers;
                           EXPECT_FALSE(result);
                         }];
  EXPECT_EQ(answers, 1);
}

TEST_F(CocoaPageDelegateTest, CameraAndMicrophoneAreDenied) {
  for (const auto type :
       {WKMediaCaptureTypeCamera, WKMediaCaptureTypeMicrophone, WKMediaCaptureTypeCameraAndMicrophone}) {
    __block int answers = 0;
    [uiOf() webView:view()
        requestMediaCapturePermissionForOrigin:nil
                              initiatedByFrame:nil
                                          type:type
                               decisionHandler:^(WKPermissionDecision decision) {
                                 ++answers;
                                 EXPECT_EQ(decision, WKPermissionDecisionDeny);
                               }];
    EXPECT_EQ(answers, 1);
  }
}

TEST_F(CocoaPageDelegateTest, ANewWindowIsTheCoresAffairAndNeverMade) {
  page().ui->createWebView("https://quendo.example/a");
  page().ui->createWebView(std::nullopt);
  EXPECT_EQ(ui_.windows, (std::vector<std::optional<std::string>>{"https://quendo.example/a", std::nullopt}));
}

TEST_F(CocoaPageDelegateTest, APromptIsAnsweredByTheCore) {
  std::vector<std::optional<std::string>> answers;
  const auto answer = [&](std::optional<std::string> text) { answers.push_back(std::move(text)); };
  page().ui->runTextInputPanel("Título", "Nota", answer);
  EXPECT_EQ(ui_.prompts, Log{"Título|Nota"});
  ui_.answerPrompt("Ação");
  page().ui->runTextInputPanel("Título", "", answer);
  ui_.answerPrompt(std::nullopt);
  EXPECT_EQ(answers, (std::vector<std::optional<std::string>>{"Ação", std::nullopt}));
}

TEST_F(CocoaPageDelegateTest, FilesAreChosenByTheCore) {
  std::vector<UiRecorder::Paths> answers;
  const auto answer = [&](UiRecorder::Paths paths) { answers.push_back(std::move(paths)); };
  page().ui->runOpenPanel(answer);
  ui_.answerOpenPanel(std::vector<std::string>{"/notes/a b%.md", "/notes/ç.md"});
  page().ui->runOpenPanel(answer);
  ui_.answerOpenPanel(std::nullopt);
  EXPECT_EQ(answers, (std::vector<UiRecorder::Paths>{{{"/notes/a b%.md", "/notes/ç.md"}}, std::nullopt}));
}

TEST_F(CocoaPageDelegateTest, AWishThatNobodyAnswersIsAnsweredWithNothingAndOnce) {
  std::vector<UiRecorder::Paths> files;
  std::vector<std::optional<std::string>> texts;
  page().ui->runOpenPanel([&](UiRecorder::Paths paths) { files.push_back(std::move(paths)); });
  page().ui->runTextInputPanel("", "",
                               [&](std::optional<std::string> text) { texts.push_back(std::move(text)); });
  EXPECT_TRUE(files.empty() && texts.empty());
  ui_.answerOpenPanel(std::vector<std::string>{"/notes/a.md"});
  ui_.answerOpenPanel = nullptr;
  ui_.answerPrompt = nullptr;
  EXPECT_EQ(files, (std::vector<UiRecorder::Paths>{{{"/notes/a.md"}}}));
  EXPECT_EQ(texts, (std::vector<std::optional<std::string>>{std::nullopt}));
}

TEST_F(CocoaPageDelegateTest, AsksNobodyOnceTheViewIsGone) {
  id navigation = navigationOf();
  id ui = uiOf();
  WKWebView* system = view();
  view_.reset();
  EXPECT_EQ(system.navigationDelegate, nil);
  EXPECT_EQ(system.UIDelegate, nil);
  [navigation webView:system didCommitNavigation:nil];
  [navigation webView:system didFinishNavigation:nil];
  [navigation webViewWebContentProcessDidTerminate:system];
  __block int answers = 0;
  [navigation webView:system
      decidePolicyForNavigationAction:[[WKNavigationAction alloc] init]
                      decisionHandler:^(WKNavigationActionPolicy policy) {
                        ++answers;
                        EXPECT_EQ(policy, WKNavigationActionPolicyCancel);
                      }];
  [ui webView:system
      runJavaScriptTextInputPanelWithPrompt:@"Title"
                                defaultText:@""
                           initiatedByFrame:nil
                          completionHandler:^(NSString* result) {
                            ++answers;
                            EXPECT_EQ(result, nil);
                          }];
  [ui webView:system
      runOpenPanelWithParameters:nil
                initiatedByFrame:nil
               completionHandler:^(NSArray* urls) {
                 ++answers;
                 EXPECT_EQ(urls, nil);
               }];
  EXPECT_EQ(answers, 3);
  EXPECT_TRUE(navigation_.log.empty());
  EXPECT_TRUE(ui_.prompts.empty());
}

}  // namespace
}  // namespace quendo::cocoa
