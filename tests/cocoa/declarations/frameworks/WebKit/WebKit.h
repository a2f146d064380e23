// WebKit, as far as Quendo uses it: classes, methods and constants of the platform's public documentation.
// Methods of delegates are required here, so that a misspelled one does not compile.
#pragma once

#import <AppKit/AppKit.h>

#pragma clang assume_nonnull begin

@class WKNavigation, WKUserContentController, WKWebView, WKWebViewConfiguration, WKWindowFeatures,
    WKSecurityOrigin, WKOpenPanelParameters;

@interface WKContentWorld : NSObject
@property(class, nonatomic, readonly) WKContentWorld* pageWorld;
+ (WKContentWorld*)worldWithName:(NSString*)name;
@end

typedef enum WKUserScriptInjectionTime : NSInteger {
  WKUserScriptInjectionTimeAtDocumentStart,
  WKUserScriptInjectionTimeAtDocumentEnd,
} WKUserScriptInjectionTime;

@interface WKUserScript : NSObject
- (instancetype)initWithSource:(NSString*)source
                 injectionTime:(WKUserScriptInjectionTime)injectionTime
              forMainFrameOnly:(BOOL)forMainFrameOnly;
- (instancetype)initWithSource:(NSString*)source
                 injectionTime:(WKUserScriptInjectionTime)injectionTime
              forMainFrameOnly:(BOOL)forMainFrameOnly
                inContentWorld:(WKContentWorld*)contentWorld;
@end

@interface WKFrameInfo : NSObject
@property(nonatomic, readonly, getter=isMainFrame) BOOL mainFrame;
@end

@interface WKScriptMessage : NSObject
@property(nonatomic, readonly, copy) id body;
@property(nonatomic, readonly, copy) NSString* name;
@property(nonatomic, readonly, copy) WKFrameInfo* frameInfo;
@end

@protocol WKScriptMessageHandler <NSObject>
- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message;
@end

@interface WKUserContentController : NSObject
- (void)addUserScript:(WKUserScript*)userScript;
- (void)removeAllUserScripts;
- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)scriptMessageHandler name:(NSString*)name;
@end

@interface WKWebsiteDataStore : NSObject
+ (WKWebsiteDataStore*)defaultDataStore;
+ (WKWebsiteDataStore*)nonPersistentDataStore;
@end

@interface WKPreferences : NSObject
@property(nonatomic) BOOL javaScriptCanOpenWindowsAutomatically;
@end

@interface WKWebViewConfiguration : NSObject
@property(nonatomic, strong) WKPreferences* preferences;
@property(nonatomic, strong) WKUserContentController* userContentController;
@property(nonatomic, strong) WKWebsiteDataStore* websiteDataStore;
@end

typedef enum WKNavigationType : NSInteger {
  WKNavigationTypeLinkActivated = 0,
  WKNavigationTypeOther = -1,
} WKNavigationType;

@interface WKNavigationAction : NSObject
@property(nonatomic, readonly) WKNavigationType navigationType;
@property(nonatomic, readonly, copy) NSURLRequest* request;
@property(nonatomic, readonly) BOOL shouldPerformDownload;
@end

@interface WKNavigationResponse : NSObject
@property(nonatomic, readonly) BOOL canShowMIMEType;
@end

typedef enum WKNavigationActionPolicy : NSInteger {
  WKNavigationActionPolicyCancel = 0,
  WKNavigationActionPolicyAllow = 1,
} WKNavigationActionPolicy;
typedef enum WKNavigationResponsePolicy : NSInteger {
  WKNavigationResponsePolicyCancel = 0,
  WKNavigationResponsePolicyAllow = 1,
} WKNavigationResponsePolicy;
typedef enum WKPermissionDecision : NSInteger {
  WKPermissionDecisionPrompt = 0,
  WKPermissionDecisionGrant = 1,
  WKPermissionDecisionDeny = 2,
} WKPermissionDecision;
typedef enum WKMediaCaptureType : NSInteger {
  WKMediaCaptureTypeCamera,
  WKMediaCaptureTypeMicrophone,
  WKMediaCaptureTypeCameraAndMicrophone,
} WKMediaCaptureType;

@protocol WKNavigationDelegate <NSObject>
- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler;
- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationResponse:(WKNavigationResponse*)navigationResponse
                      decisionHandler:(void (^)(WKNavigationResponsePolicy))decisionHandler;
- (void)webView:(WKWebView*)webView didCommitNavigation:(WKNavigation*)navigation;
- (void)webView:(WKWebView*)webView didFinishNavigation:(WKNavigation*)navigation;
- (void)webView:(WKWebView*)webView didFailNavigation:(WKNavigation*)navigation withError:(NSError*)error;
- (void)webView:(WKWebView*)webView
    didFailProvisionalNavigation:(WKNavigation*)navigation
                       withError:(NSError*)error;
- (void)webViewWebContentProcessDidTerminate:(WKWebView*)webView;
- (void)webView:(WKWebView*)webView
    didReceiveAuthenticationChallenge:(NSURLAuthenticationChallenge*)challenge
                    completionHandler:(void (^)(NSURLSessionAuthChallengeDisposition disposition,
                                                NSURLCredential* _Nullable credential))completionHandler;
@end

@protocol WKUIDelegate <NSObject>
- (nullable WKWebView*)webView:(WKWebView*)webView
    createWebViewWithConfiguration:(WKWebViewConfiguration*)configuration
               forNavigationAction:(WKNavigationAction*)navigationAction
                    windowFeatures:(WKWindowFeatures*)windowFeatures;
- (void)webView:(WKWebView*)webView
    runJavaScriptAlertPanelWithMessage:(NSString*)message
                      initiatedByFrame:(WKFrameInfo*)frame
                     completionHandler:(void (^)(void))completionHandler;
- (void)webView:(WKWebView*)webView
    runJavaScriptConfirmPanelWithMessage:(NSString*)message
                        initiatedByFrame:(WKFrameInfo*)frame
                       completionHandler:(void (^)(BOOL result))completionHandler;
- (void)webView:(WKWebView*)webView
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(nullable NSString*)defaultText
                         initiatedByFrame:(WKFrameInfo*)frame
                        completionHandler:(void (^)(NSString* _Nullable result))completionHandler;
- (void)webView:(WKWebView*)webView
    runOpenPanelWithParameters:(WKOpenPanelParameters*)parameters
              initiatedByFrame:(WKFrameInfo*)frame
             completionHandler:(void (^)(NSArray<NSURL*>* _Nullable URLs))completionHandler;
- (void)webView:(WKWebView*)webView
    requestMediaCapturePermissionForOrigin:(WKSecurityOrigin*)origin
                          initiatedByFrame:(WKFrameInfo*)frame
                                      type:(WKMediaCaptureType)type
                           decisionHandler:(void (^)(WKPermissionDecision decision))decisionHandler;
@end

@interface WKWebView : NSView
- (instancetype)initWithFrame:(NSRect)frame configuration:(WKWebViewConfiguration*)configuration;
@property(nullable, nonatomic, weak) id<WKNavigationDelegate> navigationDelegate;
@property(nullable, nonatomic, weak) id<WKUIDelegate> UIDelegate;
@property(nullable, nonatomic, readonly, copy) NSString* title;
@property(nullable, nonatomic, readonly) NSColor* themeColor;
@property(nonatomic) BOOL allowsLinkPreview;
@property(nonatomic, getter=isInspectable) BOOL inspectable API_AVAILABLE_MACOS(13.3);
- (nullable WKNavigation*)loadFileURL:(NSURL*)URL allowingReadAccessToURL:(NSURL*)readAccessURL;
- (void)evaluateJavaScript:(NSString*)javaScriptString
         completionHandler:(void (^_Nullable)(id _Nullable, NSError* _Nullable error))completionHandler;
- (void)evaluateJavaScript:(NSString*)javaScriptString
                   inFrame:(nullable WKFrameInfo*)frame
            inContentWorld:(WKContentWorld*)contentWorld
         completionHandler:(void (^_Nullable)(id _Nullable, NSError* _Nullable error))completionHandler;
- (void)callAsyncJavaScript:(NSString*)functionBody
                  arguments:(nullable NSDictionary<NSString*, id>*)arguments
                    inFrame:(nullable WKFrameInfo*)frame
             inContentWorld:(WKContentWorld*)contentWorld
          completionHandler:(void (^_Nullable)(id _Nullable, NSError* _Nullable error))completionHandler;
@end

#pragma clang assume_nonnull end
